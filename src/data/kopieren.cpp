// The structural copy of a table, and its relations.
#include "data/kopieren.h"

#include "base/fehler.h"
#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

bool nurAccess() {
    return gDatenbankFormat == kFormatAccess;
}

bool ueberschreibenErlaubt(const QString& ziel) {
    return FrageStellen(QStringLiteral("Sind sie sicher, dass die Tabelle \"") + ziel +
                            QStringLiteral("\"\rinklusive ihrer Relationen überschrieben werden soll?"),
                        Symbol::Ausrufezeichen, Knopf::Ja);
}

void relationenLoeschen(Schritte& s, const QString& tabelle) {
    dao::Relations& relationen = gDatenbank->Relations();
    for (int i = relationen.Count() - 1; i >= 0; --i)
        if (relationen.Item(i).Table() == tabelle)
            s.tu([&] { relationen.Delete(QString(relationen.Item(i).Name())); });
}

// Drops a table that stands in the way. False when the user wants to keep it.
bool platzSchaffen(Schritte& s, const QString& ziel) {
    int vorhanden = -1;
    s.tu([&] { vorhanden = TabelleVorhanden(ziel); });
    if (vorhanden == -1) return true;
    if (!ueberschreibenErlaubt(ziel)) return false;
    if (nurAccess()) relationenLoeschen(s, ziel);
    s.tu([&] { gDatenbank->TableDefs().Delete(ziel); });
    return true;
}

// A copied field: what the format keeps of it travels along, "Null not allowed" does not.
dao::Field feldKopie(const dao::Field& quelle) {
    engine::FeldDef def = quelle.definition();
    def.erforderlich = false;
    def.leerErlaubt = false;
    def.attribute = 0;
    return dao::Field(std::move(def));
}

void feldKopieren(Schritte& s, const dao::Field& feld, const std::unique_ptr<dao::TableDef>& ziel) {
    s.tu([&] { Gesetzt(ziel).Fields().Append(feldKopie(feld)); });
    s.tu([&] { Gesetzt(ziel).Fields().Item(feld.Name()).setAllowZeroLength(true); });
    s.tu([&] { Gesetzt(ziel).Fields().Item(feld.Name()).setAttributes(feld.Attributes()); });
}

void neueFelderAnhaengen(Schritte& s, const std::vector<NeuesFeld>& neueFelder, const dao::TableDef& quelle,
                         const std::unique_ptr<dao::TableDef>& ziel) {
    for (const NeuesFeld& neu : neueFelder)
        if (neu.name && neu.typ && neu.groesse)
            s.tu([&] {
                Gesetzt(ziel).Fields().Append(quelle.CreateField(*neu.name, *neu.typ, *neu.groesse));
            });
}

void indexeKopieren(Schritte& s, const dao::TableDef& quelle, const std::unique_ptr<dao::TableDef>& ziel) {
    for (int i = 0; i < quelle.Indexes().Count(); ++i) {
        const dao::Index& alt = quelle.Indexes().Item(i);
        s.tu([&] {
            dao::Index neu = Gesetzt(ziel).CreateIndex(alt.Name());
            neu.setFields(alt.Fields());
            neu.setUnique(alt.Unique());
            neu.setPrimary(alt.Primary());
            ziel->Indexes().Append(std::move(neu));
        });
    }
}

QString relationsFrage(const dao::Relation& relation) {
    const QString& fremd = relation.ForeignTable();
    QString text =
        QStringLiteral("Es besteht eine Verknüpfung zur Tabelle '") + fremd + QStringLiteral("'.\r");
    text += BitGesetzt(relation.Attributes(), dao::dbRelationUpdateCascade)
                ? QStringLiteral("1. Alle Änderungen der Datensätze werden weitergegeben!\r")
                : QStringLiteral("1. Änderungen der Datensätze werden nicht weitergegeben.\r");
    text += BitGesetzt(relation.Attributes(), dao::dbRelationDeleteCascade)
                ? QStringLiteral("2. Verknüpfte Datensätze werden ebenfalls in '") + fremd +
                      QStringLiteral("' gelöscht!\r")
                : QStringLiteral("2. Verknüpfte Datensätze werden nicht in '") + fremd +
                      QStringLiteral("' gelöscht.\r");
    return text +
           QStringLiteral(
               "\rÄnderungen dieser Einstellungen nehmen sie bitte mit den entsprechenden Programmen vor.\r"
               "Möchten sie fortsetzen?");
}

void relationenBestaetigen(const QString& quelle) {
    const dao::Relations& relationen = gDatenbank->Relations();
    for (int i = 0; i < relationen.Count(); ++i) {
        if (relationen.Item(i).Table() != quelle) continue;
        if (FrageStellen(relationsFrage(relationen.Item(i)), Symbol::Information, Knopf::Ja)) continue;
        gAbbruch = true;
        return;
    }
}

void relationKopieren(Schritte& s, int position, const QString& ziel) {
    const dao::Relation alt = gDatenbank->Relations().Item(position);
    std::unique_ptr<dao::Relation> neu;
    s.tu([&] {
        neu = std::make_unique<dao::Relation>(
            gDatenbank->CreateRelation(alt.Name(), ziel, alt.ForeignTable(), alt.Attributes()));
    });
    s.tu([&] { Gesetzt(neu).setName(alt.Name() + QStringLiteral(" (korrigiert)")); });
    for (const engine::RelationsFeld& feld : alt.Fields()) s.tu([&] { Gesetzt(neu).FeldAnhaengen(feld); });
    s.tu([&] { gDatenbank->Relations().Append(Gesetzt(neu)); });
}

}  // namespace

void TabelleKopieren(const QString& quelle, const QString& ziel, bool mitRelationen,
                     const std::optional<QString>& feldname, const std::vector<NeuesFeld>& neueFelder) {
    Schritte s([&] {
        return QStringLiteral("Fehler beim Kopieren der Tabelle '") + quelle + QStringLiteral("' nach '") +
               ziel + QStringLiteral("'.");
    });
    s.ablauf(
        [&] {
            if (!platzSchaffen(s, ziel)) {
                gAbbruch = true;
                return;
            }
            dao::TableDef* alt = nullptr;
            std::unique_ptr<dao::TableDef> neu;
            s.tu([&] { alt = &gDatenbank->TableDefs().Item(quelle); });
            s.tu([&] { neu = gDatenbank->CreateTableDef(); });
            s.tu([&] { Gesetzt(neu).setAttributes(Gesetzt(alt).Attributes()); });
            s.tu([&] { Gesetzt(neu).setName(ziel); });
            const int felder = alt ? alt->Fields().Count() : 0;
            for (int i = 0; i < felder; ++i) {
                const dao::Field& feld = alt->Fields().Item(i);
                feldKopieren(s, feld, neu);
                if (feldname && feld.Name() == *feldname) neueFelderAnhaengen(s, neueFelder, *alt, neu);
            }
            if (alt) indexeKopieren(s, *alt, neu);
            s.tu([&] {
                Gesetzt(neu);
                gDatenbank->TableDefs().Append(std::move(neu));
            });
            if (mitRelationen && nurAccess()) s.tu([&] { relationenBestaetigen(quelle); });
        },
        [] { gFehler = true; });
}

std::optional<QString> KopieEinwand(const QString& quelle, const QString& ziel, qint64 zeilen,
                                    const std::vector<NeuesFeld>& neueFelder) {
    const dao::TableDef& definition = Gesetzt(gDatenbank).TableDefs().Item(quelle);
    std::vector<dao::Field> neue;
    for (const NeuesFeld& neu : neueFelder)
        neue.push_back(definition.CreateField(neu.name.value(), neu.typ.value(), neu.groesse.value()));
    try {
        definition.KopiePruefen(ziel, neue, zeilen);
        return std::nullopt;
    } catch (const EngineFehler& fehler) {
        return fehler.beschreibung();
    }
}

void RelationenKopieren(const QString& quelle, const QString& ziel) {
    if (!nurAccess()) return;
    Schritte s([] { return QStringLiteral("Fehler beim Erstellen der Relationen."); });
    s.ablauf(
        [&] {
            int anzahl = 0;
            s.tu([&] { anzahl = gDatenbank->Relations().Count(); });
            for (int i = 0; i < anzahl; ++i) {
                bool betroffen = false;
                s.tu([&] { betroffen = gDatenbank->Relations().Item(i).Table() == quelle; });
                if (betroffen) relationKopieren(s, i, ziel);
            }
        },
        [] { gFehler = true; });
}
