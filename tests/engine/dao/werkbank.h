// What the tests of the database operations share: a small database in memory and short ways to look into it.
#pragma once

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <limits>

#include "engine/dao/speicherdatei.h"
#include "engine/jet/mdbdatei.h"
#include "gemeinsam/fehlernummer.h"

inline engine::FeldDef feldDef(const char16_t* name, int typ, int groesse = 0, int attribute = 0) {
    engine::FeldDef feld;
    feld.name = QString::fromUtf16(name);
    feld.typ = typ;
    feld.groesse = groesse;
    feld.attribute = attribute;
    return feld;
}

// A database with the table "Kunden" (Nr, Name, Ort, Betrag) of five rows and an empty table "Leer".
class Werkbank : public testing::Test {
  protected:
    Werkbank() {
        inhalt.tabellen.push_back({kunden(), kundenzeilen()});
        engine::TabellenDef leer;
        leer.name = QStringLiteral("Leer");
        leer.felder = {feldDef(u"A", dao::dbText, 10)};
        inhalt.tabellen.push_back({leer, {}});
    }
    ~Werkbank() override {
        db.reset();
        dao::DateiOeffnerSetzen(dao::Dateiart::Access, jet::mdbOeffnen);
    }

    static engine::TabellenDef kunden() {
        engine::TabellenDef def;
        def.name = QStringLiteral("Kunden");
        def.geaendert = QDateTime(QDate(2001, 2, 3), QTime(4, 5, 6));
        def.felder = {feldDef(u"Nr", dao::dbLong, 4, dao::dbAutoIncrField), feldDef(u"Name", dao::dbText, 20),
                      feldDef(u"Ort", dao::dbText, 20), feldDef(u"Betrag", dao::dbCurrency, 8)};
        def.felder[1].leerErlaubt = true;
        engine::IndexDef schluessel;
        schluessel.name = QStringLiteral("PrimaryKey");
        schluessel.felder = {{QStringLiteral("Nr"), false}};
        schluessel.eindeutig = schluessel.primaer = true;
        def.indexe = {schluessel};
        return def;
    }

    static std::vector<engine::Zeile> kundenzeilen() {
        const auto zeile = [](int nr, const char16_t* name, const Wert& ort) {
            return engine::Zeile{Wert(nr), Wert(name), ort, Wert(Waehrung{nr * 10000})};
        };
        return {zeile(1, u"Zimmer", Wert(u"Bonn")), zeile(2, u"Äcker", Wert(u"Ulm")),
                zeile(3, u"Adler", Wert::null()), zeile(4, u"adam", Wert(u"Bonn")),
                zeile(5, u"Meyer", Wert(u"Aachen"))};
    }

    dao::Database& oeffnen() {
        dao::DateiOeffnerSetzen(dao::Dateiart::Access, [this](const QString&, const QString& passwort) {
            inhalt.passwort = passwort;
            return std::make_unique<Speicherdatei>(inhalt);
        });
        // The opener never looks at it, but a database is a file that exists.
        const QString pfad = ordner.filePath(QStringLiteral("test.mdb"));
        QFile datei(pfad);
        EXPECT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.close();
        db = bereich->OpenDatabase(pfad, false, false, QStringLiteral(";PWD=;"));
        return *db;
    }

    dao::TableDef& tabelle(const char16_t* name) { return db->TableDefs().Item(QString::fromUtf16(name)); }

    // A new table with one Long field "Z" and one row for each number.
    dao::TableDef& anlegen(const char16_t* name, const std::vector<int>& zahlen = {}) {
        auto def = db->CreateTableDef();
        def->setName(QString::fromUtf16(name));
        def->Fields().Append(def->CreateField(QStringLiteral("Z"), dao::dbLong));
        db->TableDefs().Append(std::move(def));
        const auto satz = db->OpenRecordset(QString::fromUtf16(name));
        for (int zahl : zahlen) {
            satz->AddNew();
            satz->Fields(0).setValue(Wert(zahl));
            satz->Update();
        }
        return tabelle(name);
    }

    // The texts of one field in the order of a recordset, joined by blanks; Null is a "-".
    QString spalte(const QString& quelle, const char16_t* feld) {
        const auto satz = db->OpenRecordset(quelle);
        return spalte(*satz, feld);
    }
    static QString spalte(dao::Recordset& satz, const char16_t* feld) {
        QStringList texte;
        if (satz.RecordCount() > 0) satz.MoveFirst();
        for (; !satz.Eof(); satz.MoveNext()) {
            const Wert& wert = satz.Fields(QString::fromUtf16(feld)).Value();
            texte << (wert.istNull() ? QStringLiteral("-") : wert.alsText());
        }
        return texte.join(u' ');
    }

    QStringList tabellennamen() {
        QStringList liste;
        for (const auto& t : db->TableDefs()) liste << t->Name();
        return liste;
    }

    QTemporaryDir ordner;
    Speicherinhalt inhalt;
    std::unique_ptr<dao::Workspace> bereich =
        dao::DBEngine::CreateWorkspace({}, QStringLiteral("Admin"), {}, 2);
    std::unique_ptr<dao::Database> db;
};
