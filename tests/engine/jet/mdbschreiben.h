// Writes tables into .mdb files and looks at them through mdbtools.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStringList>
#include <memory>
#include <vector>

#include "engine/jet/mdbdatei.h"
#include "engine/jet/proben.h"
#include "engine/jet/pruefer.h"
#include "engine/typen.h"

namespace mdbschreiben {

using engine::FeldDef;
using engine::TabellenDef;
using engine::Zeile;
using tabellenprobe::alleZeilen;
using tabellenprobe::anlegen;
using tabellenprobe::feld;
using tabellenprobe::Zeilen;

inline QString mdbtools(const QString& programm, const QStringList& worte) {
    QProcess prozess;
    prozess.start(programm, worte);
    EXPECT_TRUE(prozess.waitForFinished(60000)) << programm.toStdString();
    EXPECT_EQ(prozess.exitCode(), 0) << programm.toStdString() << " "
                                     << prozess.readAllStandardError().constData();
    return QString::fromUtf8(prozess.readAllStandardOutput());
}

inline QStringList tabellenLautMdbtools(const QString& pfad) {
    return mdbtools(QStringLiteral("mdb-tables"), {QStringLiteral("-1"), pfad})
        .split(u'\n', Qt::SkipEmptyParts);
}

// Rows of a table, cells in `|`, Null as "NULL".
inline QStringList zeilenLautMdbtools(const QString& pfad, const QString& tabelle) {
    return mdbtools(QStringLiteral("mdb-export"),
                    {QStringLiteral("-H"), QStringLiteral("-Q"), QStringLiteral("-d"), QStringLiteral("|"),
                     QStringLiteral("-0"), QStringLiteral("NULL"), QStringLiteral("-D"),
                     QStringLiteral("%Y-%m-%d"), QStringLiteral("-T"), QStringLiteral("%Y-%m-%d %H:%M:%S"),
                     QStringLiteral("-b"), QStringLiteral("hex"), pfad, tabelle})
        .split(u'\n', Qt::SkipEmptyParts);
}

// Raises after some rows.
class Kaputt : public Zeilen {
  public:
    using Zeilen::Zeilen;
    bool naechste(Zeile& zeile) override {
        if (Zeilen::naechste(zeile)) return true;
        throw EngineFehler(kBeschaedigt, QStringLiteral("mittendrin"));
    }
};

inline engine::IndexDef index(const QString& name, const QString& feldname, bool eindeutig,
                              bool primaer = false) {
    engine::IndexDef def;
    def.name = name;
    def.felder = {{feldname, false}};
    def.eindeutig = eindeutig;
    def.primaer = primaer;
    return def;
}

inline TabellenDef kunden() {
    TabellenDef def;
    def.name = QStringLiteral("Kunden");
    def.felder = {feld(QStringLiteral("Nr"), dao::dbLong), feld(QStringLiteral("Name"), dao::dbText, 50)};
    def.indexe = {index(QStringLiteral("PrimaryKey"), QStringLiteral("Nr"), true, true),
                  index(QStringLiteral("Name"), QStringLiteral("Name"), false)};
    return def;
}

inline std::vector<Zeile> kundenzeilen(int anzahl) {
    std::vector<Zeile> zeilen;
    for (int i = 1; i <= anzahl; ++i)
        zeilen.push_back({Wert(i), Wert(QStringLiteral("Müller %1").arg(i % 97))});
    return zeilen;
}

inline QByteArray inhalt(const QString& pfad) {
    QFile datei(pfad);
    EXPECT_TRUE(datei.open(QIODevice::ReadOnly));
    return datei.readAll();
}

// Fails when the file's own check finds a deviation.
inline void ohneMangel(const QString& pfad) {
    auto geraet = std::make_unique<QFile>(pfad);
    ASSERT_TRUE(geraet->open(QIODevice::ReadOnly));
    EXPECT_EQ(jet::maengelSuchen(jet::Seitendatei(std::move(geraet))), QStringList());
}

}  // namespace mdbschreiben
