// A folder of .dbf files for a test: tables made from rows, samples copied in, foreign readers called.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <vector>

#include "base/fehler.h"
#include "engine/dbase/dbaseordner.h"
#include "engine/typen.h"
#include "gemeinsam/tabellenprobe.h"

namespace dbasebank {

using engine::FeldDef;
using engine::TabellenDef;
using engine::Zeile;
using tabellenprobe::alleZeilen;
using tabellenprobe::anlegen;
using tabellenprobe::feld;
using tabellenprobe::tabelle;
using tabellenprobe::Zeilen;

inline QString probe(const QString& name) {
    return QStringLiteral(LINDGARN_FREMDDATEN) + QStringLiteral("/dbf/beispiele/") + name;
}

inline QByteArray inhalt(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

inline void schreiben(const QString& pfad, const QByteArray& bytes) {
    QFile datei(pfad);
    ASSERT_TRUE(datei.open(QIODevice::WriteOnly)) << pfad.toStdString();
    datei.write(bytes);
}

inline Wert w(const char16_t* text) {
    return Wert(QString::fromUtf16(text));
}

inline const TabellenDef& definition(const engine::Katalog& katalog, const QString& name) {
    for (const TabellenDef& def : katalog.tabellen)
        if (def.name == name) return def;
    throw std::runtime_error("no table " + name.toStdString());
}

inline QString zeileText(const Zeile& zeile) {
    QStringList teile;
    for (const Wert& wert : zeile) teile << (wert.istNull() ? QStringLiteral("-") : wert.alsText());
    return teile.join(u'|');
}

inline QByteArray aufrufen(const QString& programm, const QStringList& worte, int* code = nullptr) {
    QProcess prozess;
    prozess.start(programm, worte);
    EXPECT_TRUE(prozess.waitForFinished(120000)) << programm.toStdString();
    if (code)
        *code = prozess.exitCode();
    else
        EXPECT_EQ(prozess.exitCode(), 0) << prozess.readAllStandardError().constData();
    return prozess.readAllStandardOutput();
}

// What dbfread, a foreign reader, makes of a table: {"felder":[...],"zeilen":[...]}. With an empty page it
// goes by the language byte.
inline QJsonObject dbfread(const QString& pfad, const QString& seite = QString()) {
    return QJsonDocument::fromJson(
               aufrufen(QStringLiteral("/usr/bin/python3"),
                        {QStringLiteral(LINDGARN_QUELLE "/tests/engine/dbase/dbfabzug.py"), pfad, seite}))
        .object();
}

class DbaseTest : public testing::Test {
  protected:
    QString pfad(const QString& name) const { return ordner.filePath(name); }
    QStringList dateien() const {
        return QDir(ordner.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }
    // Every file's name and content.
    std::map<QString, QByteArray> alles() const {
        std::map<QString, QByteArray> stand;
        for (const QString& name : dateien()) stand[name] = inhalt(pfad(name));
        return stand;
    }
    dbase::DbaseOrdner oeffnen() const { return dbase::DbaseOrdner(ordner.path()); }
    // Puts a sample into the folder under another name; false when it is not on this machine.
    bool holen(const QString& name, const QString& als) const {
        if (!QFile::exists(probe(name))) return false;
        schreiben(pfad(als), inhalt(probe(name)));
        return true;
    }
    // A table with rows, written by the program.
    void schreibeTabelle(const TabellenDef& def, const std::vector<Zeile>& zeilen) const {
        dbase::DbaseOrdner datei(ordner.path());
        datei.anwenden({anlegen(def, zeilen)});
    }
    void kunden(const QString& name, int anzahl = 3) const {
        std::vector<Zeile> zeilen;
        for (int i = 1; i <= anzahl; ++i)
            zeilen.push_back({Wert(i), Wert(QStringLiteral("Müller %1").arg(i))});
        schreibeTabelle(tabelle(name, {feld(QStringLiteral("NR"), dao::dbLong),
                                       feld(QStringLiteral("NAME"), dao::dbText, 20)}),
                        zeilen);
    }

    QTemporaryDir ordner;
};

}  // namespace dbasebank

#define PROBE_ODER_UEBERSPRINGEN(name)          \
    if (!QFile::exists(dbasebank::probe(name))) \
    GTEST_SKIP() << "fehlt: " << dbasebank::probe(name).toStdString()
