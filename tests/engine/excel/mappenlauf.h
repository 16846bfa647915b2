// Reads everything in a bare workbook stream and changes it in every way: what the damage tests and the
// fuzzer drive.
#pragma once

#include "engine/excel/blatttabelle.h"
#include "engine/excel/neuetabelle.h"
#include "engine/excel/schreiber.h"
#include "gemeinsam/versuchen.h"

namespace mappenlauf {

inline constexpr int kHoechsteZeilen = 200;  // of each table

// Lets through nothing but EngineFehler.
inline void allesLesen(const QByteArray& strom) {
    const auto mappe = std::make_shared<const excel::Arbeitsmappe>(strom);
    for (const excel::Tabellenort& ort : mappe->tabellen()) {
        Versuchen([&] {
            const auto zeilen = excel::tabellenzeilen(mappe, excel::tabellenplan(*mappe, ort));
            engine::Zeile zeile;
            for (int i = 0; i < kHoechsteZeilen && zeilen->naechste(zeile); ++i) continue;
        });
    }
}

template <typename F>
QByteArray geaendert(const QByteArray& strom, F tun) {
    excel::Mappe mappe(strom);
    excel::Schreiber schreiber(mappe);
    tun(schreiber);
    schreiber.abschliessen();
    return mappe.bytes();
}

inline QByteArray mitNeuer(const QByteArray& strom, const QString& name) {
    const auto a =
        neuetabelle::anlegen(name, neuetabelle::gemischteFelder(), neuetabelle::gemischteZeilen(5, "Ort "));
    return geaendert(strom, [&](excel::Schreiber& s) { s.anlegen(a.def, *a.zeilen()); });
}

// Adds a table, renames it, drops it and the first of the old ones; each result must read as a workbook
// again.
inline void allesAendern(const QByteArray& strom) {
    const QByteArray neu = mitNeuer(strom, "Neu von hier");
    const QByteArray anders =
        geaendert(neu, [](excel::Schreiber& s) { s.umbenennen("Neu von hier", "Anders"); });
    const excel::Arbeitsmappe mappe(anders);
    if (!excel::tabelleFinden(mappe.tabellen(), "Anders")) qFatal("the added table is gone");
    const QByteArray ohne = geaendert(anders, [](excel::Schreiber& s) { s.loeschen("Anders"); });
    const QString alte = mappe.tabellen().front().name;
    Versuchen([&] { excel::Arbeitsmappe(geaendert(ohne, [&](excel::Schreiber& s) { s.loeschen(alte); })); });
    allesLesen(ohne);
}

}  // namespace mappenlauf
