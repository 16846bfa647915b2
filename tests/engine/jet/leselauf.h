// Reads everything a database file offers, bounded: what the mutation tests and the fuzzer drive.
#pragma once

#include <QByteArray>

#include "base/fehler.h"
#include "engine/jet/indexseite.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/pruefer.h"
#include "engine/jet/zeile.h"

namespace leselauf {

inline constexpr int kHoechsteZeilen = 2000;  // of each table

inline void indexeLesen(const jet::Seitendatei& datei, const jet::Tabelle& tabelle) {
    for (const jet::EchterIndex& index : tabelle.echte) {
        jet::Baumgang gang(datei, index.wurzel, tabelle.name);
        for (int i = 0; i < kHoechsteZeilen && gang.weiter(); ++i) continue;
    }
}

inline void tabelleLesen(const jet::Seitendatei& datei, const jet::Objekt& objekt) {
    try {
        const jet::Tabelle tabelle = jet::tabelleLesen(datei, objekt);
        indexeLesen(datei, tabelle);
        jet::Tabellenleser leser(datei, tabelle);
        engine::Zeile zeile;
        for (int i = 0; i < kHoechsteZeilen && leser.naechste(zeile); ++i) continue;
    } catch (const EngineFehler&) {
        // One damaged table keeps none of the others from being read.
    }
}

// Catalogue, relations, all tables and the whole check. Lets through nothing but EngineFehler.
inline void allesLesen(const QByteArray& bytes) {
    const jet::Seitendatei datei(bytes);
    jet::katalogLesen(datei);
    for (const jet::Objekt& objekt : jet::objekteLesen(datei))
        if (objekt.typ == jet::kObjektTabelle) tabelleLesen(datei, objekt);
    jet::maengelSuchen(datei);
}

}  // namespace leselauf
