// Whole files, through the engine that the program uses.
#include "base/text.h"
#include "datenbank.h"
#include "operationen.h"

namespace {

constexpr qint64 kBlock = 500;

QJsonArray felderVon(const dao::TableDef& tabelle) {
    QJsonArray felder;
    for (int i = 0; i < tabelle.Fields().Count(); ++i) {
        const dao::Field& feld = tabelle.Fields().Item(i);
        felder += QJsonObject{{"name", feld.Name()},
                              {"typ", feld.Type()},
                              {"groesse", feld.Size()},
                              {"attribute", feld.Attributes()}};
    }
    return felder;
}

QJsonArray indexeVon(const dao::TableDef& tabelle) {
    QJsonArray indexe;
    for (int i = 0; i < tabelle.Indexes().Count(); ++i) {
        const dao::Index& index = tabelle.Indexes().Item(i);
        QJsonArray felder;
        for (const engine::IndexFeld& feld : index.Fields()) felder += QJsonArray{feld.name, feld.absteigend};
        indexe += QJsonObject{{"name", index.Name()},
                              {"felder", felder},
                              {"eindeutig", index.Unique()},
                              {"primaer", index.Primary()}};
    }
    return indexe;
}

// Rows are counted in the tables that the program offers; the file's own tables give null.
QJsonValue zeilenzahl(dao::TableDef& tabelle) {
    if (tabelle.Attributes() != 0) return QJsonValue(QJsonValue::Null);
    return tabelle.OpenRecordset()->RecordCount();
}

QJsonValue zeitpunkt(const QDateTime& zeit) {
    if (!zeit.isValid()) return QJsonValue(QJsonValue::Null);
    return QJsonObject{{"datum", zeit.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))}};
}

QJsonArray relationenVon(const OffeneDatenbank& datenbank) {
    QJsonArray relationen;
    for (int i = 0; i < datenbank->Relations().Count(); ++i) {
        const dao::Relation& relation = datenbank->Relations().Item(i);
        QJsonArray felder;
        for (const engine::RelationsFeld& feld : relation.Fields())
            felder += QJsonArray{feld.name, feld.fremdname};
        relationen += QJsonObject{{"name", relation.Name()},
                                  {"tabelle", relation.Table()},
                                  {"fremdtabelle", relation.ForeignTable()},
                                  {"attribute", relation.Attributes()},
                                  {"felder", felder}};
    }
    return relationen;
}

QJsonValue katalog(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    QJsonArray tabellen;
    for (const auto& tabelle : datenbank->TableDefs())
        tabellen += QJsonObject{{"name", tabelle->Name()},
                                {"attribute", tabelle->Attributes()},
                                {"geaendert", zeitpunkt(tabelle->LastUpdated())},
                                {"zeilen", zeilenzahl(*tabelle)},
                                {"felder", felderVon(*tabelle)},
                                {"indexe", indexeVon(*tabelle)}};
    return QJsonObject{{"tabellen", tabellen}, {"relationen", relationenVon(datenbank)}};
}

// The rows from the current record on, at most `anzahl` of them; -1 for all.
QJsonArray zeilenLesen(dao::Recordset& satz, qint64 anzahl) {
    QJsonArray zeilen;
    while (!satz.Eof() && (anzahl < 0 || zeilen.size() < anzahl)) {
        const qint64 rest = anzahl < 0 ? kBlock : Minimum(kBlock, anzahl - qint64(zeilen.size()));
        const dao::Block block = satz.GetRows(rest);
        for (int z = 0; z < block.zeilen(); ++z) {
            QJsonArray zeile;
            for (int s = 0; s < block.spalten(); ++s) zeile += JsonAusWert(block(s, z));
            zeilen += zeile;
        }
    }
    return zeilen;
}

QJsonValue zeilen(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    const qint64 erste = a.anzahl() > 3 ? a.grosseGanzzahl(3) : 0;
    const auto satz = datenbank->TableDefs().Item(a.text(2)).OpenRecordset();
    if (erste > 0 && !satz->Eof()) satz->Move(erste);
    return zeilenLesen(*satz, a.anzahl() > 4 ? a.grosseGanzzahl(4) : -1);
}

QJsonValue abfrage(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    const QString text = a.text(2);
    if (!text.startsWith(u"DELETE")) return zeilenLesen(*datenbank->OpenRecordset(text), -1);
    const qint64 anzahl = datenbank->Execute(text);
    datenbank.sichern();
    return anzahl;
}

// Texts may be empty unless the field says otherwise ("leerErlaubt").
dao::Field feldAus(const dao::TableDef& tabelle, const QJsonObject& angabe) {
    dao::Field feld =
        tabelle.CreateField(angabe["name"].toString(), angabe["typ"].toInt(), angabe["groesse"].toInt());
    feld.setAttributes(angabe["attribute"].toInt());
    feld.setAllowZeroLength(angabe["leerErlaubt"].toBool(true));
    return feld;
}

dao::Index indexAus(const dao::TableDef& tabelle, const QJsonObject& angabe) {
    std::vector<engine::IndexFeld> felder;
    for (const QJsonValue feld : angabe["felder"].toArray())
        felder.push_back({feld.toArray().at(0).toString(), feld.toArray().at(1).toBool()});
    dao::Index index = tabelle.CreateIndex(angabe["name"].toString());
    index.setFields(std::move(felder));
    index.setUnique(angabe["eindeutig"].toBool());
    index.setPrimary(angabe["primaer"].toBool());
    return index;
}

void zeilenSchreiben(dao::Recordset& satz, const QJsonArray& zeilen) {
    for (const QJsonValue element : zeilen) {
        const QJsonArray zeile = element.toArray();
        if (zeile.size() != satz.FieldsCount())
            throw Abgelehnt(QStringLiteral("Eine Zeile hat %1 Werte.").arg(zeile.size()));
        satz.AddNew();
        for (int s = 0; s < satz.FieldsCount(); ++s) satz.Fields(s).setValue(WertAusJson(zeile[s]));
        satz.Update();
    }
}

QJsonValue tabelleSchreiben(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    const QJsonObject angabe = a.objekt(2);
    const QString name = angabe["name"].toString();
    auto tabelle = datenbank->CreateTableDef();
    tabelle->setName(name);
    for (const QJsonValue feld : angabe["felder"].toArray())
        tabelle->Fields().Append(feldAus(*tabelle, feld.toObject()));
    for (const QJsonValue index : angabe["indexe"].toArray())
        tabelle->Indexes().Append(indexAus(*tabelle, index.toObject()));
    datenbank->TableDefs().Append(std::move(tabelle));
    zeilenSchreiben(*datenbank->TableDefs().Item(name).OpenRecordset(), angabe["zeilen"].toArray());
    datenbank.sichern();
    return true;
}

QJsonValue tabelleLoeschen(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    datenbank->TableDefs().Delete(a.text(2));
    datenbank.sichern();
    return true;
}

QJsonValue tabelleUmbenennen(const Argumente& a) {
    const OffeneDatenbank datenbank(a.text(0), a.text(1));
    datenbank->TableDefs().Item(a.text(2)).setName(a.text(3));
    datenbank.sichern();
    return true;
}

}  // namespace

void DateienAnmelden(Operationen& operationen) {
    operationen["Katalog"] = katalog;
    operationen["Zeilen"] = zeilen;
    operationen["Abfrage"] = abfrage;
    operationen["TabelleSchreiben"] = tabelleSchreiben;
    operationen["TabelleLoeschen"] = tabelleLoeschen;
    operationen["TabelleUmbenennen"] = tabelleUmbenennen;
}
