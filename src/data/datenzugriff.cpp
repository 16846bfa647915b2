// Opening databases and small questions to them.
#include "data/datenzugriff.h"

#include <algorithm>

#include "base/fehler.h"
#include "base/pfad.h"
#include "base/text.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

constexpr int kDbaseNamenslaenge = 8;

struct Oeffnung {
    QString name;
    QString format;
};

// What the extension makes of a path; an extension that leaves the format alone keeps the one given.
Oeffnung oeffnungFuer(const QString& endung, const QString& pfad, const QString& passwort,
                      const QString& bisher) {
    const QString ordner = VerzeichnisAusPfad(pfad);
    if (endung == u"MDB") return {pfad, QStringLiteral(";PWD=") + passwort + u';'};
    if (endung == u"XLS") return {pfad, QString::fromUtf16(kFormatExcel5)};
    if (endung == u"DBF")
        return {ordner.chopped(std::min<qsizetype>(1, ordner.size())), QString::fromUtf16(kFormatDbase5)};
    if (endung == u"DB" || endung == u"TXT") return {ordner, bisher};
    return {pfad, QString()};
}

QString verbindungstext(const QString& pfad, const QString& passwort) {
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + pfad +
           QStringLiteral(";Jet OLEDB:Database Password=") + passwort + u';';
}

// Shows the advice for the first table whose name is too long for the old formats; True when there was one.
bool langerNameGemeldet(dao::Database& datenbank) {
    if (gDatenbankFormat != kFormatDbase3 && gDatenbankFormat != kFormatDbase4) return false;
    for (const auto& tabelle : datenbank.TableDefs()) {
        if (tabelle->Name().size() <= kDbaseNamenslaenge) continue;
        fenster().sanduhr(false);
        KastenZeigen(QStringLiteral("Bitte geben sie der Tabelle \"") + tabelle->Name() +
                     QStringLiteral("\"\reinen Namen mit maximal 8 Zeichen Länge, sonst\r"
                                    "können bei diesen älteren Formaten Probleme auftreten."));
        return true;
    }
    return false;
}

// A wrong password and a file of no known format are not told apart; every other refusal says what to do.
bool erklaertSichSelbst(int nummer) {
    return nummer != 0 && nummer != kPasswortFalsch && nummer != kDateiNichtLesbar;
}

void oeffnenFehlgeschlagen() {
    QString text = QStringLiteral(
        "Fehler beim Öffnen der Datenbank.\rDas Datenbankformat wird nicht unterstützt oder\r"
        "das eingegebene Passwort ist nicht korrekt.");
    if (erklaertSichSelbst(FehlerNummerGemerkt())) text += QStringLiteral("\r\r") + FehlerBeschreibung();
    FehlerVergessen();
    AchtungZeigen(text);
    gFehler = true;
    fenster().sanduhr(false);
}

// One box for all of them, which still fits the screen.
void hinweiseZeigen(const engine::Hinweise& hinweise) {
    constexpr size_t kHoechstens = 8;
    if (hinweise.empty()) return;
    QStringList saetze(hinweise.begin(),
                       hinweise.begin() + std::ptrdiff_t(std::min(hinweise.size(), kHoechstens)));
    if (hinweise.size() > kHoechstens)
        saetze << QStringLiteral("(und %1 weitere Hinweise)").arg(hinweise.size() - kHoechstens);
    HinweisZeigen(saetze.join(QStringLiteral("\r")));
}

void oeffnen(const QString& pfad, const QString& passwort, std::unique_ptr<dao::Database>& datenbank) {
    const QString endung = Grossschrift(DateiEndung(pfad));
    const Oeffnung oeffnung = oeffnungFuer(endung, pfad, passwort, gDatenbankFormat);
    gDatenbankName = oeffnung.name;
    gDatenbankFormat = oeffnung.format;
    gVerbindungstext = verbindungstext(pfad, passwort);
    datenbank = Gesetzt(gArbeitsbereich).OpenDatabase(gDatenbankName, false, false, gDatenbankFormat);
    if (langerNameGemeldet(*datenbank)) {
        gFehler = true;
        return;
    }
    datenbank->setQueryTimeout(1);
    fenster().sanduhr(false);
    hinweiseZeigen(datenbank->Oeffnungshinweise());
}

bool sichern(dao::Database& datenbank) {
    Schritte s(
        [] { return QStringLiteral("Fehler beim Speichern der Datenbank '%1'.").arg(gDatenbankPfad); });
    engine::Hinweise hinweise;
    bool weiter = true;
    if (gRahmen == kRahmenDurchfuehrung && !Angehalten())
        fenster().information(QStringLiteral("Schreibe die Datei ..."));
    fenster().sanduhr(true);
    s.ablauf([&] { s.tu([&] { hinweise = datenbank.Sichern(); }); }, [&] { weiter = false; });
    fenster().sanduhr(false);
    hinweiseZeigen(hinweise);
    return weiter;
}

}  // namespace

void DatenbankOeffnen(const QString& pfad, const QString& passwort,
                      std::unique_ptr<dao::Database>& datenbank) {
    gFehler = false;
    gDatenbankPfad = gDatenbankName = pfad;
    gDatenbankPasswort = passwort;
    fenster().sanduhr(true);
    try {
        return oeffnen(pfad, passwort, datenbank);
    } catch (...) {
        FehlerMerken();
    }
    oeffnenFehlgeschlagen();
}

void DatenbankSchliessen(std::unique_ptr<dao::Database>& datenbank) {
    if (!datenbank) return;
    FehlerUebergehen([&] {
        if (datenbank->ungesichert()) sichern(*datenbank);
    });
    FehlerUebergehen([&] { datenbank->Close(); });
    datenbank.reset();
}

bool DatenbankSichern() {
    return !gDatenbank || sichern(*gDatenbank);
}

qint64 DatensaetzeZaehlen(dao::Recordset& satz) {
    if (satz.Eof()) return 0;
    satz.MoveLast();
    const qint64 anzahl = satz.RecordCount();
    satz.MoveFirst();
    return anzahl;
}

qint64 DatensaetzeDerTabelle(const QString& tabelle) {
    const std::unique_ptr<dao::Recordset> satz = Gesetzt(gDatenbank).OpenRecordset(tabelle);
    const qint64 anzahl = DatensaetzeZaehlen(*satz);
    satz->Close();
    return anzahl;
}

QStringList FeldNamen(const QString& tabelle) {
    QStringList namen;
    const dao::Fields& felder = Gesetzt(gDatenbank).TableDefs().Item(tabelle).Fields();
    for (int i = 0; i < felder.Count(); ++i) namen << felder.Item(i).Name();
    return namen;
}

QStringList TabellenNamen() {
    QStringList namen;
    for (const auto& tabelle : Gesetzt(gDatenbank).TableDefs())
        if (tabelle->Attributes() == 0) namen << tabelle->Name();
    return namen;
}

int TabelleVorhanden(const QString& name) {
    dao::TableDefs& tabellen = gDatenbank->TableDefs();
    const QString gesucht = Grossschrift(name);
    for (int i = 0; i < tabellen.Count(); ++i)
        if (Grossschrift(tabellen.Item(i).Name()) == gesucht) return i;
    return -1;
}
