// A table to be written, for the tests of this folder: fields and rows in memory.
#pragma once

#include "gemeinsam/tabellenprobe.h"

namespace neuetabelle {

inline engine::FeldDef feld(const char16_t* name, int typ, int groesse = 0, const QByteArray& eigenes = {}) {
    return tabellenprobe::feld(QString::fromUtf16(name), typ, groesse, eigenes);
}

inline engine::TabelleAnlegen anlegen(const QString& name, std::vector<engine::FeldDef> felder,
                                      std::vector<engine::Zeile> zeilen) {
    return tabellenprobe::anlegen(tabellenprobe::tabelle(name, std::move(felder)), std::move(zeilen));
}

// Text, number, date, date and time, Boolean and money. Row 0 is full, later ones have gaps.
inline std::vector<engine::FeldDef> gemischteFelder() {
    return {feld(u"Name", dao::dbText, 255), feld(u"Zahl", dao::dbDouble, 8),
            feld(u"Tag", dao::dbDate, 8),    feld(u"Zeit", dao::dbDate, 8),
            feld(u"Ja", dao::dbBoolean, 1),  feld(u"Geld", dao::dbCurrency, 8)};
}

inline std::vector<engine::Zeile> gemischteZeilen(int anzahl, const QString& stamm) {
    std::vector<engine::Zeile> zeilen;
    for (int i = 0; i < anzahl; ++i) {
        engine::Zeile zeile{Wert(stamm + QString::number(i % 17)),
                            Wert(i % 2 ? i * 1.25 : i * 1e6),
                            Wert(DatumZeit{36000.0 + i}),
                            Wert(DatumZeit{36000.5 + i}),
                            Wert(i % 3 == 0),
                            Wert(Waehrung{i * 12345})};
        if (i > 0) zeile[size_t(i) % zeile.size()] = Wert::null();
        zeilen.push_back(zeile);
    }
    return zeilen;
}

}  // namespace neuetabelle
