// The settings file: reading its items one by one and what each of them sets.
#include "fields/einstellungen.h"

#include <QStringDecoder>
#include <array>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "fields/feldarten.h"

namespace {

struct Vorgabe {
    int feldart;
    const char16_t* bezeichnung;
    qint16 code;
    qint16 relevanz;
    qint16 signifikanz;
};
constexpr std::array<Vorgabe, 18> kVorgaben = {{
    {kIgnorieren, u"Ignorieren", 1, 0, 0},
    {kIndex, u"Index", 1, 0, 0},
    {kFirmenname, u"Firmenname", 1, 20, 100},
    {kRechtsform, u"Rechtsform", 2, 5, 10},
    {kBranche, u"Branche", 4, 20, 50},
    {kStrasse, u"Straße", 1, 40, 60},
    {kHausnummer, u"Hausnummer", 2, 20, 40},
    {kPostleitzahl, u"Postleitzahl", 4, 100, 20},
    {kOrt, u"Ort", 8, 80, 20},
    {kAnrede, u"Anrede", 1, 10, 10},
    {kVorname, u"Vorname", 2, 20, 50},
    {kNachname, u"Nachname", 4, 30, 60},
    {kAbteilung, u"Abteilung/Position", 8, 10, 50},
    {kVorwahl, u"Vorwahl", 1, 80, 80},
    {kTelefon, u"Telefon", 2, 80, 80},
    {kTelefax, u"Telefax", 4, 80, 80},
    {kEmailadresse, u"Emailadresse", 1, 70, 30},
    {kInternetadresse, u"Internetadresse", 2, 70, 50},
}};
constexpr std::array<const char16_t*, 7> kGruppen = {
    u"Allgemeines", u"Indices", u"Unternehmen", u"Adresse", u"Kontakt", u"Kommunikation", u"Internet"};
constexpr float kRelevanzVorgabe = 0.8f;
constexpr float kSignifikanzVorgabe = 0.6f;

void tabellenFuellen(bool mitGewichten) {
    gFeldArten.fill(Feldart{});
    for (size_t i = 0; i < kGruppen.size(); ++i)
        gFeldGruppen[i].Bezeichnung = QString::fromUtf16(kGruppen[i]);
    for (const Vorgabe& v : kVorgaben)
        gFeldArten[size_t(v.feldart)] = {QString::fromUtf16(v.bezeichnung), v.code,
                                         mitGewichten ? v.relevanz : qint16(0),
                                         mitGewichten ? v.signifikanz : qint16(0)};
    gRelevanz = kRelevanzVorgabe;
    gSignifikanz = kSignifikanzVorgabe;
}

// Cuts the text into items: up to a comma or a line's end, or from one double quote to the next.
class Postenleser {
  public:
    explicit Postenleser(const QString& text) : text_(text) {}
    bool amEnde() const { return stelle_ >= text_.size(); }

    QString naechster() {
        blankenUeberlesen();
        if (stelle_ < text_.size() && text_[stelle_] == u'"') return inAnfuehrung();
        const qsizetype start = stelle_;
        while (!amEnde() && !trennt(text_[stelle_])) ++stelle_;
        const QString posten = text_.mid(start, stelle_ - start);
        trennerUeberlesen();
        return posten;
    }

  private:
    static bool trennt(QChar c) { return c == u',' || c == u'\r' || c == u'\n'; }

    QString inAnfuehrung() {
        const qsizetype start = ++stelle_;
        const qsizetype ende = text_.indexOf(u'"', start);
        stelle_ = ende < 0 ? text_.size() : ende + 1;
        const QString posten = text_.mid(start, ende < 0 ? -1 : ende - start);
        blankenUeberlesen();
        trennerUeberlesen();
        return posten;
    }

    void blankenUeberlesen() {
        while (!amEnde() && text_[stelle_] == u' ') ++stelle_;
    }

    // One comma, or one line's end in any of its three spellings.
    void trennerUeberlesen() {
        if (amEnde() || !trennt(text_[stelle_])) return;
        const bool wagenruecklauf = text_[stelle_++] == u'\r';
        if (wagenruecklauf && !amEnde() && text_[stelle_] == u'\n') ++stelle_;
    }

    QString text_;
    qsizetype stelle_ = 0;
};

// The number that a text reads as, with comma or point as the separator.
std::optional<double> alsZahl(const QString& text) {
    if (!TextLiestSichAlsZahl(text)) return std::nullopt;
    bool lesbar = false;
    const double zahl = Trim(text).replace(u',', u'.').toDouble(&lesbar);
    return lesbar ? std::optional(zahl) : std::nullopt;
}

// Rounded to the nearest whole number, halves to the even one; nothing when it does not fit 16 bits.
std::optional<qint16> alsGanzzahl(const QString& text) {
    const std::optional<double> zahl = alsZahl(text);
    if (!zahl) return std::nullopt;
    const double gerundet = std::nearbyint(*zahl);
    using Grenzen = std::numeric_limits<qint16>;
    if (gerundet < Grenzen::min() || gerundet > Grenzen::max()) return std::nullopt;
    return qint16(gerundet);
}

// What the items read so far amount to: the kind that the next factor belongs to.
class Anwender {
  public:
    void posten(QString text) {
        if (text.isEmpty() || TextLiestSichAlsZahl(text)) {
            feldart_ = text.isEmpty() ? 0 : alsGanzzahl(text).value_or(0);
            return;
        }
        // No else between the keys: what one leaves behind is what the next one is tested on.
        if (schluessel(text, u"RelevanzFaktor = ")) faktorSetzen(&Feldart::RelevanzFaktor, text);
        if (schluessel(text, u"SignifikanzFaktor = ")) faktorSetzen(&Feldart::SignifikanzFaktor, text);
        if (schluessel(text, u"gRelevanz = ")) anteilSetzen(gRelevanz, text);
        if (schluessel(text, u"gSignifikanz = ")) anteilSetzen(gSignifikanz, text);
    }

  private:
    static bool schluessel(QString& text, QStringView name) {
        if (!text.startsWith(name)) return false;
        text.remove(0, name.size());
        return true;
    }

    void faktorSetzen(qint16 Feldart::*faktor, const QString& text) const {
        const std::optional<qint16> zahl = alsGanzzahl(text);
        if (zahl && feldart_ >= kErsteFeldart && feldart_ <= kLetzteFeldart)
            gFeldArten[size_t(feldart_)].*faktor = *zahl;
    }

    static void anteilSetzen(float& anteil, const QString& text) {
        if (const std::optional<double> zahl = alsZahl(text)) anteil = float(*zahl / 100);
    }

    int feldart_ = 0;
};

// Windows-1252 where it differs from Latin-1: 0x80 to 0x9f. The five bytes without a character keep their
// code.
constexpr std::array<char16_t, 32> kAb80 = {0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                            0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008d, 0x017d, 0x008f,
                                            0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                            0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

QString ausWindows1252(const QByteArray& bytes) {
    QString text;
    text.reserve(bytes.size());
    for (char zeichen : bytes) {
        const quint8 byte = quint8(zeichen);
        text += QChar(byte >= 0x80 && byte < 0xa0 ? kAb80[byte - 0x80u] : char16_t(byte));
    }
    return text;
}

}  // namespace

void EinstellungenAnwenden(const std::optional<QString>& text) {
    tabellenFuellen(!text.has_value());
    if (!text) return;
    Anwender anwender;
    for (Postenleser leser(*text); !leser.amEnde();) anwender.posten(leser.naechster());
}

QString TextAusBytes(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? ausWindows1252(bytes) : text;
}
