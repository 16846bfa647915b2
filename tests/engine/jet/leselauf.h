// Reads everything a database file offers, bounded: what the mutation tests and the fuzzer drive.
#pragma once

#include <QByteArray>

#include "engine/jet/indexseite.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/pruefer.h"
#include "engine/jet/zeile.h"
#include "gemeinsam/versuchen.h"

namespace leselauf {

inline constexpr int kHoechsteZeilen = 2000;  // of each table and each index

inline void indexLesen(const jet::Seitendatei& datei, quint32 wurzel) {
    jet::Baumgang gang(datei, wurzel, QStringLiteral("Probe"));
    for (int i = 0; i < kHoechsteZeilen && gang.weiter(); ++i) continue;
}

inline void zeilenLesen(const jet::Seitendatei& datei, const jet::Tabelle& tabelle) {
    jet::Tabellenleser leser(datei, tabelle);
    engine::Zeile zeile;
    for (int i = 0; i < kHoechsteZeilen && leser.naechste(zeile); ++i) continue;
}

inline void objektLesen(const jet::Seitendatei& datei, const jet::Objekt& objekt) {
    if (objekt.typ != jet::kObjektTabelle) return;
    const jet::Tabelle tabelle = jet::tabelleLesen(datei, objekt);
    for (const jet::EchterIndex& index : tabelle.echte) Versuchen([&] { indexLesen(datei, index.wurzel); });
    zeilenLesen(datei, tabelle);
}

// Catalogue, relations, all tables and the whole check. Lets through nothing but EngineFehler.
inline void allesLesen(const QByteArray& bytes) {
    const jet::Seitendatei datei(bytes);
    Versuchen([&] { jet::maengelSuchen(datei); });
    jet::katalogLesen(datei);
    for (const jet::Objekt& objekt : jet::objekteLesen(datei)) Versuchen([&] { objektLesen(datei, objekt); });
}

}  // namespace leselauf
