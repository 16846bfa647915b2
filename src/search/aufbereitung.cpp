// Preparing values, one rule a kind.
#include "search/aufbereitung.h"

#include <QStringList>

#include "base/text.h"
#include "fields/parser.h"

namespace {

// The published type codes; this floor knows no database.
constexpr int kTypBoolean = 1;
constexpr int kTypCurrency = 5;
constexpr int kTypDate = 8;
constexpr int kTypTime = 22;
constexpr int kAttributZaehler = 16;

bool bleibtStehen(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'ä' || c == u'ö' || c == u'ü';
}

bool istZiffer(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The order is the rule: each removal sees what the ones before it left.
QString strassenwoerterEntfernen(QString text) {
    static const QStringList woerter =
        QStringLiteral("weg gasse strasse str chaussee allee platz ring der dem den auf am an zum zu im in")
            .split(u' ');
    for (const QString& wort : woerter) text = TextEntfernen(text, wort);
    return text;
}

Wert kleingeschrieben(const Wert& wert) {
    return wert.istLeerOderNull() ? wert : Wert(KleinZeichenweise(wert.alsText()));
}

Wert text(const Wert& wert, int groesse) {
    return TextNormalisieren(wert).left(groesse);
}

Wert firmaMitRechtsform(const Wert& wert, int groesse) {
    const QString name = TextNormalisieren(FirmennameErmitteln(kleingeschrieben(wert)));
    return QString(name + u' ' + RechtsformErmitteln(wert).alsText()).left(groesse);
}

Wert strasse(const Wert& wert, int groesse) {
    return strassenwoerterEntfernen(TextNormalisieren(wert)).left(groesse);
}

Wert strasseMitNummer(const Wert& wert, int groesse) {
    const QString name = Trim(strassenwoerterEntfernen(TextNormalisieren(StrasseErmitteln(wert))));
    return QString(name + u' ' + ZiffernFiltern(HausnummerErmitteln(wert))).left(groesse);
}

Wert ziffern(const Wert& wert, int) {
    return ZiffernFiltern(wert);
}

Wert vorwahl(const Wert& wert, int) {
    return VorwahlErmitteln(wert);
}

Wert rufnummer(const Wert& wert, int) {
    return TelefonnummerErmitteln(wert);
}

Wert vorwahlMitRufnummer(const Wert& wert, int) {
    return QString(VorwahlErmitteln(wert).alsText() + u' ' + TelefonnummerErmitteln(wert).alsText());
}

// In front of the folding: the same prefix in capitals stays, as the word "http".
Wert ohneHttp(const Wert& wert, int) {
    return WortEntfernen(wert, QStringLiteral("http://"));
}

Aufbereitung aus(std::initializer_list<Aufbereitung::Schritt> schritte) {
    Aufbereitung a;
    for (const Aufbereitung::Schritt schritt : schritte) a.schritte[a.anzahl++] = schritt;
    return a;
}

Aufbereitung fuerAdresse(int maske) {
    if (maske == Maske({kStrasse})) return aus({strasse});
    if (maske == Maske({kHausnummer})) return aus({ziffern});
    if (maske == Maske({kStrasse, kHausnummer})) return aus({strasseMitNummer});
    if (maske == Maske({kPostleitzahl})) return aus({ziffern});
    if (maske == Maske({kOrt})) return aus({text});
    if (maske == Maske({kPostleitzahl, kOrt})) return aus({text});
    return {};
}

Aufbereitung fuerKommunikation(int maske) {
    if (maske == Maske({kVorwahl})) return aus({vorwahl});
    if (maske == Maske({kTelefon}) || maske == Maske({kTelefax})) return aus({rufnummer});
    if (maske == Maske({kVorwahl, kTelefon}) || maske == Maske({kVorwahl, kTelefax}))
        return aus({vorwahlMitRufnummer});
    return {};
}

Aufbereitung fuerInternet(int maske) {
    const bool mail = FeldartEnthalten(maske, kEmailadresse);
    const bool netz = FeldartEnthalten(maske, kInternetadresse);
    if (mail && netz) return aus({text, ohneHttp, text});
    if (netz) return aus({ohneHttp, text});
    return mail ? aus({text}) : Aufbereitung();
}

}  // namespace

QString TextNormalisieren(const Wert& wert) {
    if (wert.istLeerOderNull()) return {};
    const QString text = Kleinschrift(wert);
    QString ergebnis(text.size(), Qt::Uninitialized);
    QChar* const anfang = ergebnis.data();
    QChar* ende = anfang;
    bool luecke = false;
    for (const QChar c : text) {
        if (!bleibtStehen(c)) {
            luecke = true;
            continue;
        }
        if (luecke && ende != anfang) *ende++ = u' ';
        luecke = false;
        *ende++ = c;
    }
    ergebnis.truncate(ende - anfang);
    return ergebnis;
}

QString ZiffernFiltern(const Wert& wert) {
    QString ergebnis;
    for (const QChar c : wert.alsText())
        if (istZiffer(c)) ergebnis += c;
    return ergebnis;
}

Wert WortEntfernen(const Wert& wert, const QString& wort) {
    if (wert.istNull()) return {};
    return TextEntfernen(wert.alsText(), wort);
}

bool WirdAufbereitet(const Spaltenart& spalte) {
    if (spalte.attribute & kAttributZaehler) return false;
    return spalte.typ != kTypBoolean && spalte.typ != kTypCurrency && spalte.typ != kTypDate &&
           spalte.typ != kTypTime;
}

Aufbereitung AufbereitungFuer(const FeldZuordnung& zuordnung) {
    const int maske = zuordnung.Maske;
    switch (zuordnung.Gruppe) {
        case 2:
            return FeldartEnthalten(maske, kRechtsform) ? aus({firmaMitRechtsform}) : aus({text});
        case 3:
            return fuerAdresse(maske);
        case 4:
            return aus({text});
        case 5:
            return fuerKommunikation(maske);
        case 6:
            return fuerInternet(maske);
        default:
            return {};
    }
}

Wert AufbereiteterWert(const Wert& wert, const FeldZuordnung& zuordnung, int groesse) {
    const Aufbereitung a = AufbereitungFuer(zuordnung);
    Wert ergebnis = wert;
    for (int i = 0; i < a.anzahl; ++i) ergebnis = a.schritte[i](ergebnis, groesse);
    return ergebnis;
}
