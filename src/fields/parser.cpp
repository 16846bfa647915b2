// Value parsers: word lists, a first digit, a last blank.
#include "fields/parser.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "fields/feldarten.h"

namespace {

constexpr std::array kFirmenwoerter = {u"GMBH & CO", u"GMBH", u"CO", u"GBRMBH", u"GBR",
                                       u"MBH",       u"KGAA", u"KG", u"AG"};
constexpr std::array kTitelwoerter = {u"PROF.", u"DR.",  u"MED.", u"RER.", u"NAT.",
                                      u"PHIL.", u"POL.", u"H.",   u"C."};
constexpr QStringView kKleinbuchstaben = u"abcdefghijklmnopqrstuvwxyzäöüß";
constexpr QStringView kVorDemOrt = u"0123456789- ";

struct Rechtsformregel {
    const char16_t* suche;
    const char16_t* beschriftung;
};
// The order is the rule: each test sees the text as the deletions before it left it.
constexpr std::array<Rechtsformregel, 10> kRechtsformregeln = {{
    {u" GMBH & CO", u" GmbH & Co."},
    {u" G. M. B. H.", u" GmbH"},
    {u" GMBH", u" GmbH"},
    {u" CO", u" Co."},
    {u" GBRMBH", u" GbRmbH"},
    {u" GBR", u" GbR"},
    {u" MBH", u" GmbH"},
    {u" KGAA", u" KGaA"},
    {u" KG", u" KG"},
    {u" AG", u" AG"},
}};

template <size_t n>
bool inListe(QStringView wort, const std::array<const char16_t*, n>& liste) {
    return std::any_of(liste.begin(), liste.end(), [&](const char16_t* eintrag) { return wort == eintrag; });
}

bool istZiffer(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The position (from 0) of the first digit, -1 for none.
qsizetype ersteZiffer(QStringView text) {
    const auto fund = std::find_if(text.begin(), text.end(), istZiffer);
    return fund == text.end() ? -1 : fund - text.begin();
}

// Calls `besuch(start, wort)` for what stands between two blanks, empty words included, until it returns
// false.
template <typename Besuch>
void woerterDurchgehen(QStringView text, Besuch besuch) {
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != u' ') continue;
        if (!besuch(start, text.mid(start, i - start))) return;
        start = i + 1;
    }
}

// The words that `auswahl` takes by their upper case, each behind a blank, then trimmed. Empty when it takes
// none.
template <typename Auswahl>
Wert woerterSammeln(QStringView text, Auswahl auswahl) {
    QString gesammelt;
    woerterDurchgehen(text, [&](qsizetype, QStringView wort) {
        if (auswahl(GrossZeichenweise(wort))) gesammelt += u' ' + Trim(wort);
        return true;
    });
    return gesammelt.isEmpty() ? Wert() : Wert(Trim(gesammelt));
}

Wert mitPlus(QStringView zeichen) {
    return Wert(u'+' + zeichen.toString());
}

// The untrimmed text behind a country prefix, whose way of writing shows in the first characters.
QString ohneLandesvorwahl(const QString& text) {
    if (text.startsWith(u'+')) return text.mid(3);
    return text.startsWith(u"00") ? text.mid(4) : text.mid(2);
}

}  // namespace

Wert FeldInhaltErmitteln(const Wert& wert, int feldart) {
    switch (feldart) {
        case kIgnorieren:
        case kIndex:
        case kBranche:
        case kAbteilung:
        case kEmailadresse:
        case kInternetadresse:
            return wert;
        case kFirmenname:
            return FirmennameErmitteln(wert);
        case kRechtsform:
            return RechtsformErmitteln(wert);
        case kStrasse:
            return StrasseErmitteln(wert);
        case kHausnummer:
            return HausnummerErmitteln(wert);
        case kPostleitzahl:
            return PostleitzahlErmitteln(wert);
        case kOrt:
            return OrtErmitteln(wert);
        case kAnrede:
            return AnredeErmitteln(wert);
        case kVorname:
            return VornameErmitteln(wert);
        case kNachname:
            return NachnameErmitteln(wert);
        case kVorwahl:
            return VorwahlErmitteln(wert);
        case kTelefon:
        case kTelefax:
            return TelefonnummerErmitteln(wert);
        default:
            return Wert();
    }
}

Wert FirmennameErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    QString text = wert.alsText();
    for (const QString& gesperrt :
         {QStringLiteral("G. M. B. H."), QStringLiteral("g. m. b. h."), QStringLiteral("G. m. b. H.")})
        text = TextEntfernen(text, gesperrt);
    return woerterSammeln(text, [](QStringView wort) { return !inListe(wort, kFirmenwoerter); });
}

Wert RechtsformErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    QString text = GrossZeichenweise(wert.alsText());
    QString formen;
    for (const Rechtsformregel& regel : kRechtsformregeln) {
        const QString suche = QString::fromUtf16(regel.suche);
        if (!text.contains(suche)) continue;
        text = TextEntfernen(text, suche);
        formen += regel.beschriftung;
    }
    return formen.isEmpty() ? Wert() : Wert(Trim(formen));
}

Wert StrasseErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = wert.alsText();
    const qsizetype ziffer = ersteZiffer(text);
    if (ziffer < 0) return Wert(Trim(text));
    const QString strasse = Trim(QStringView(text).left(ziffer));
    return strasse.isEmpty() ? Wert() : Wert(strasse);
}

Wert HausnummerErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = wert.alsText();
    const qsizetype ziffer = ersteZiffer(text);
    return ziffer < 0 ? Wert() : Wert(text.mid(ziffer));
}

Wert PostleitzahlErmitteln(const Wert& wert) {
    constexpr qsizetype kMindestlaenge = 4;
    if (wert.istLeerOderNull()) return Wert();
    const QString text = KleinZeichenweise(wert.alsText());
    const qsizetype ziffer = ersteZiffer(text);
    if (ziffer < 0) return Wert();
    qsizetype ende = ziffer + 1;
    while (ende < text.size() && !kKleinbuchstaben.contains(text[ende])) ++ende;
    const QString zahl = Trim(QStringView(text).mid(ziffer, ende - ziffer));
    return zahl.size() >= kMindestlaenge ? Wert(zahl) : Wert();
}

Wert OrtErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = wert.alsText();
    qsizetype start = 0;
    while (start < text.size() && kVorDemOrt.contains(text[start])) ++start;
    return start == text.size() ? Wert() : Wert(text.mid(start));
}

Wert AnredeErmitteln(const Wert& wert) {
    const Wert form = AnredeFormErmitteln(wert);
    const Wert titel = TitelErmitteln(wert);
    if (form.istLeer() && titel.istLeer()) return Wert();
    return Wert(Trim(QString(form.alsText() + u' ' + titel.alsText())));
}

Wert VornameErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = wert.alsText();
    Wert vorname;
    woerterDurchgehen(text, [&](qsizetype start, QStringView wort) {
        const Wert einzeln(wort.toString());
        const bool anrede = !AnredeFormErmitteln(einzeln).istLeer() || !TitelErmitteln(einzeln).istLeer();
        if (!anrede && NachnameErmitteln(Wert(text.mid(start))) != einzeln) vorname = einzeln;
        return vorname.istLeer();
    });
    return vorname;
}

Wert NachnameErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = wert.alsText();
    return Wert(text.mid(text.lastIndexOf(u' ') + 1));
}

Wert VorwahlErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    if (LandesvorwahlErmitteln(wert).istLeer()) {
        const Wert wort = Wort(wert, 1);
        return wort.istText() && wort.text().startsWith(u'0') ? wort : Wert();
    }
    const Wert wort = Wort(Wert(ohneLandesvorwahl(wert.alsText())), 1);
    return wort.istLeer() || wort.text().startsWith(u'0') ? wort : Wert(u'0' + wort.text());
}

Wert TelefonnummerErmitteln(const Wert& wert) {
    constexpr qsizetype kMindestlaenge = 4;
    const Wert letztes = Wort(wert, -1);
    if (letztes.istLeer()) return Wert();
    QString nummer = letztes.text();
    if (nummer.size() < kMindestlaenge) nummer.prepend(Wort(wert, -2).alsText());
    return nummer.startsWith(u'0') ? Wert() : Wert(nummer);
}

Wert LandesvorwahlErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = Trim(wert.alsText());
    const auto teil = [&](qsizetype ab, qsizetype laenge) { return QStringView(text).mid(ab, laenge); };
    if (text.startsWith(u'+') && TextLiestSichAlsZahl(teil(1, 2))) return mitPlus(teil(1, 2));
    if (text.startsWith(u"00") && TextLiestSichAlsZahl(teil(2, 2))) return mitPlus(teil(2, 2));
    if (!TextLiestSichAlsZahl(teil(2, 1)) && TextLiestSichAlsZahl(teil(0, 2))) return mitPlus(teil(0, 2));
    return Wert();
}

Wert AnredeFormErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    const QString text = GrossZeichenweise(wert.alsText()) + u' ';
    if (text.contains(u"HERR ") || text.contains(u"HR.")) return Wert(u"Herr");
    if (text.contains(u"FRAU ") || text.contains(u"FR.")) return Wert(u"Frau");
    return Wert();
}

Wert TitelErmitteln(const Wert& wert) {
    if (wert.istLeerOderNull()) return Wert();
    return woerterSammeln(wert.alsText(), [](QStringView wort) { return inListe(wort, kTitelwoerter); });
}
