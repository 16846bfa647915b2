// Values in the text form of a record's fields.
#include "engine/dbase/werte.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace dbase {
namespace {

constexpr int kKurzeZahl = 15;    // so many digits fit into a double without loss
constexpr int kAlleZiffern = 17;  // so many say exactly which double it is
constexpr int kSchnelleStellen = 6;
constexpr int kMaxZahltext = 64;
constexpr qint64 kTageBis1970 = 25569;               // from 1899-12-30
constexpr double kGanzeGrenze = 9007199254740992.0;  // 2^53

constexpr double kZehner[] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool istZiffer(char c) {
    return c >= '0' && c <= '9';
}

QByteArrayView beschnitten(QByteArrayView feld) {
    const qsizetype null = feld.indexOf('\0');
    if (null >= 0) feld = feld.first(null);
    qsizetype anfang = 0;
    qsizetype ende = feld.size();
    while (anfang < ende && feld[anfang] == ' ') ++anfang;
    while (ende > anfang && feld[ende - 1] == ' ') --ende;
    return feld.sliced(anfang, ende - anfang);
}

// The common case: few digits, one point at most.
std::optional<double> kurzeZahl(QByteArrayView text) {
    qint64 ganz = 0;
    int ziffern = 0;
    int nachkomma = -1;
    const bool negativ = text[0] == '-';
    for (qsizetype i = negativ || text[0] == '+' ? 1 : 0; i < text.size(); ++i) {
        const char c = text[i];
        if (istZiffer(c)) {
            ganz = ganz * 10 + (c - '0');
            ++ziffern;
            if (nachkomma >= 0) ++nachkomma;
        } else if (c == '.' && nachkomma < 0) {
            nachkomma = 0;
        } else {
            return std::nullopt;
        }
        if (ziffern > kKurzeZahl) return std::nullopt;
    }
    if (ziffern == 0) return std::nullopt;
    const double zahl = double(ganz) / kZehner[std::max(nachkomma, 0)];
    return negativ ? -zahl : zahl;
}

bool zahlform(QByteArrayView text) {
    qsizetype i = text[0] == '-' || text[0] == '+' ? 1 : 0;
    int ziffern = 0;
    bool punkt = false;
    for (; i < text.size() && (istZiffer(text[i]) || (text[i] == '.' && !punkt)); ++i) {
        punkt = punkt || text[i] == '.';
        ziffern += istZiffer(text[i]);
    }
    if (ziffern == 0) return false;
    if (i == text.size()) return true;
    if (text[i] != 'e' && text[i] != 'E') return false;
    if (++i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    return i < text.size() && std::all_of(text.begin() + i, text.end(), istZiffer);
}

// A number with more digits than a double keeps, exactly.
std::optional<qint64> ganzeZahl(QByteArrayView text) {
    if (text[0] == '+') text = text.sliced(1);
    qint64 zahl = 0;
    const auto [ende, fehler] = std::from_chars(text.begin(), text.end(), zahl);
    if (fehler != std::errc() || ende != text.end()) return std::nullopt;
    return zahl;
}

bool alsDoubleGenau(qint64 zahl) {
    const double naechster = double(zahl);
    // Beyond this the way back is none.
    return std::abs(naechster) < 9.2e18 && qint64(naechster) == zahl;
}

Gelesen langeZahl(QByteArrayView text) {
    std::array<char, 256> puffer{};
    const qsizetype n = std::min<qsizetype>(text.size(), qsizetype(puffer.size()));
    std::copy_n(text.begin(), n, puffer.begin());
    QByteArrayView zahl(puffer.data(), n);
    if (!zahl.contains('.') && std::count(zahl.begin(), zahl.end(), ',') == 1)
        *std::find(puffer.begin(), puffer.end(), ',') = '.';
    if (!zahlform(zahl)) return {Wert::null(), false};
    if (const auto ganz = ganzeZahl(zahl); ganz && !alsDoubleGenau(*ganz)) return {Wert(*ganz), true};
    if (zahl[0] == '+') zahl = zahl.sliced(1);
    double ergebnis = 0;
    const auto [ende, fehler] = std::from_chars(zahl.begin(), zahl.end(), ergebnis);
    if (fehler != std::errc() || !std::isfinite(ergebnis)) return {Wert::null(), false};
    return {Wert(ergebnis), true};
}

int zweiZiffern(const char* z) {
    return (z[0] - '0') * 10 + (z[1] - '0');
}

// Cuts off zeros in front and behind.
void kuerzen(Dezimaltext& d) {
    qsizetype vorn = 0;
    while (vorn < d.ziffern.size() && d.ziffern[vorn] == '0') ++vorn;
    d.ziffern.remove(0, vorn);
    d.stelle -= int(vorn);
    while (d.ziffern.endsWith('0')) d.ziffern.chop(1);
    if (d.ziffern.isEmpty()) d.stelle = 0;
}

Dezimaltext ausGanzzahl(qint64 zahl, int nachkomma) {
    Dezimaltext d;
    d.negativ = zahl < 0;
    d.ziffern = QByteArray::number(zahl);
    if (d.negativ) d.ziffern.remove(0, 1);
    d.stelle = int(d.ziffern.size()) - nachkomma;
    kuerzen(d);
    return d;
}

std::optional<Dezimaltext> ausDouble(double zahl, int stellen) {
    if (!std::isfinite(zahl)) return std::nullopt;
    char puffer[kMaxZahltext];
    const std::to_chars_result r =
        stellen >= kAlleZiffern
            ? std::to_chars(puffer, puffer + sizeof puffer, zahl, std::chars_format::scientific)
            : std::to_chars(puffer, puffer + sizeof puffer, zahl, std::chars_format::scientific, stellen - 1);
    const QByteArrayView text(puffer, r.ptr);
    const qsizetype e = text.indexOf('e');
    Dezimaltext d;
    d.negativ = text[0] == '-';
    for (const char c : text.first(e))
        if (istZiffer(c)) d.ziffern += c;
    int exponent = 0;
    const qsizetype ab = text[e + 1] == '+' ? e + 2 : e + 1;
    std::from_chars(text.data() + ab, r.ptr, exponent);
    d.stelle = exponent + 1;
    kuerzen(d);
    return d;
}

Dezimaltext ausDezimal(const Dezimal& zahl) {
    const QString text = dezimalText(zahl);
    Dezimaltext d;
    d.negativ = zahl.negativ;
    qsizetype komma = -1;
    for (const QChar c : text) {
        if (c == u',') komma = d.ziffern.size();
        if (c.unicode() < 128 && istZiffer(char(c.unicode()))) d.ziffern += char(c.unicode());
    }
    d.stelle = int(komma < 0 ? d.ziffern.size() : komma);
    kuerzen(d);
    return d;
}

// Rounds to `stellen` digits behind the point, half away from zero.
void runden(Dezimaltext& d, int stellen) {
    const int bleiben = d.stelle + stellen;
    if (bleiben >= d.ziffern.size()) return;
    const bool auf = bleiben >= 0 && d.ziffern[bleiben] >= '5';
    d.ziffern.truncate(std::max(bleiben, 0));
    if (auf) {
        qsizetype i = d.ziffern.size();
        while (i > 0 && d.ziffern[i - 1] == '9') d.ziffern[--i] = '0';
        if (i > 0) {
            ++d.ziffern[i - 1];
        } else {
            d.ziffern.prepend('1');
            ++d.stelle;
        }
    }
    kuerzen(d);
}

// A whole number whose last `davon` digits stand behind the point, followed by zeros up to `stellen`.
bool ganzeSchreiben(qint64 zahl, char* ziel, int breite, int stellen, int davon = 0) {
    char* ende = ziel + breite;
    const auto davor = [&](char c) {
        if (ende == ziel) return false;
        *--ende = c;
        return true;
    };
    for (int i = davon; i < stellen; ++i)
        if (!davor('0')) return false;
    quint64 rest = zahl < 0 ? quint64(0) - quint64(zahl) : quint64(zahl);
    for (int i = 0; i < davon; ++i, rest /= 10)
        if (!davor(char('0' + rest % 10))) return false;
    if (stellen > 0 && !davor('.')) return false;
    do {
        if (!davor(char('0' + rest % 10))) return false;
        rest /= 10;
    } while (rest > 0);
    if (zahl < 0 && !davor('-')) return false;
    std::fill(ziel, ende, ' ');
    return true;
}

bool dezimaltextSchreiben(const Dezimaltext& d, char* ziel, int breite, int stellen) {
    const auto ziffer = [&](int i) { return i >= 0 && i < d.ziffern.size() ? d.ziffern[i] : '0'; };
    char puffer[512];
    int n = 0;
    if (d.stelle > 400) return false;
    if (d.negativ && !d.ziffern.isEmpty()) puffer[n++] = '-';
    if (d.stelle <= 0) puffer[n++] = '0';
    for (int i = 0; i < d.stelle; ++i) puffer[n++] = ziffer(i);
    if (stellen > 0) puffer[n++] = '.';
    for (int i = 0; i < std::min(stellen, 64); ++i) puffer[n++] = ziffer(d.stelle + i);
    if (n > breite) return false;
    std::fill_n(ziel, breite - n, ' ');
    std::copy_n(puffer, n, ziel + breite - n);
    return true;
}

}  // namespace

Gelesen zahlLesen(QByteArrayView feld) {
    const QByteArrayView text = beschnitten(feld);
    if (text.isEmpty() || text[0] == '*') return {};
    if (text.size() == 1 && !istZiffer(text[0]) && (text[0] == '.' || text[0] == '-')) return {};
    if (const std::optional<double> zahl = kurzeZahl(text)) return {Wert(*zahl), true};
    return langeZahl(text);
}

Gelesen datumLesen(QByteArrayView feld) {
    if (feld.size() == 8 && std::all_of(feld.begin(), feld.end(), istZiffer)) {
        const char* z = feld.data();
        const int jahr = zweiZiffern(z) * 100 + zweiZiffern(z + 2);
        const int monat = zweiZiffern(z + 4);
        const int tag = zweiZiffern(z + 6);
        if (jahr == 0 && monat == 0 && tag == 0) return {};
        const std::optional<qint64> tage = tageVon(jahr, monat, tag);
        return tage ? Gelesen{Wert(DatumZeit{double(*tage)}), true} : Gelesen{Wert::null(), false};
    }
    const bool leer =
        std::all_of(feld.begin(), feld.end(), [](char c) { return c == ' ' || c == 0 || c == '0'; });
    return {Wert::null(), leer};
}

Wert wahrheitLesen(char zeichen) {
    return Wert(zeichen != 0 && std::strchr("TtYyJj1", zeichen) != nullptr);
}

qint64 blocknummerLesen(QByteArrayView feld) {
    const QByteArrayView text = beschnitten(feld);
    qint64 nummer = 0;
    const auto [ende, fehler] = std::from_chars(text.begin(), text.end(), nummer);
    return fehler == std::errc() && ende == text.end() ? nummer : 0;
}

qsizetype laengeOhneEnde(const char* feld, qsizetype laenge) {
    while (laenge > 0 && (feld[laenge - 1] == ' ' || feld[laenge - 1] == 0)) --laenge;
    return laenge;
}

std::optional<qint64> tageVon(int jahr, int monat, int tag) {
    static constexpr int kTage[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (jahr < 1 || jahr > 9999 || monat < 1 || monat > 12 || tag < 1) return std::nullopt;
    const bool schaltjahr = (jahr % 4 == 0 && jahr % 100 != 0) || jahr % 400 == 0;
    if (tag > kTage[monat - 1] + (monat == 2 && schaltjahr)) return std::nullopt;
    // Years from March on, in rounds of 400.
    const int j = monat <= 2 ? jahr - 1 : jahr;
    const int runde = j / 400;
    const int jahrDerRunde = j - runde * 400;
    const int tagDesJahres = (153 * (monat + (monat > 2 ? -3 : 9)) + 2) / 5 + tag - 1;
    const int tagDerRunde = jahrDerRunde * 365 + jahrDerRunde / 4 - jahrDerRunde / 100 + tagDesJahres;
    return qint64(runde) * 146097 + tagDerRunde - 719468 + kTageBis1970;
}

Kalendertag kalendertagVon(qint64 tage) {
    const qint64 z = tage - kTageBis1970 + 719468;
    const qint64 runde = (z >= 0 ? z : z - 146096) / 146097;
    const qint64 tagDerRunde = z - runde * 146097;
    const qint64 jahrDerRunde =
        (tagDerRunde - tagDerRunde / 1460 + tagDerRunde / 36524 - tagDerRunde / 146096) / 365;
    const qint64 tagDesJahres = tagDerRunde - (365 * jahrDerRunde + jahrDerRunde / 4 - jahrDerRunde / 100);
    const qint64 m = (5 * tagDesJahres + 2) / 153;
    const int tag = int(tagDesJahres - (153 * m + 2) / 5 + 1);
    const int monat = int(m < 10 ? m + 3 : m - 9);
    return {int(jahrDerRunde + runde * 400 + (monat <= 2 ? 1 : 0)), monat, tag};
}

std::optional<Dezimaltext> dezimaltextVon(const Wert& wert, int stellen) {
    switch (wert.art()) {
        case Wert::Art::Ganzzahl:
            return ausGanzzahl(wert.ganzzahl(), 0);
        case Wert::Art::Waehrung:
            return ausGanzzahl(wert.waehrung().zehntausendstel, 4);
        case Wert::Art::Dezimal:
            return ausDezimal(wert.dezimal());
        case Wert::Art::Text:
        case Wert::Art::Bytes:
            return std::nullopt;
        default:
            return ausDouble(wert.alsZahl(), stellen);
    }
}

Zahlergebnis zahlSchreiben(const Wert& wert, char* ziel, int breite, int stellen) {
    const auto ergebnis = [](bool passt) { return passt ? Zahlergebnis::Genau : Zahlergebnis::PasstNicht; };
    if (wert.art() == Wert::Art::Ganzzahl)
        return ergebnis(ganzeSchreiben(wert.ganzzahl(), ziel, breite, stellen));
    if (wert.art() == Wert::Art::Gleitzahl) {
        const double zahl = wert.gleitzahl();
        if (std::abs(zahl) < kGanzeGrenze && zahl == std::floor(zahl))
            return ergebnis(ganzeSchreiben(qint64(zahl), ziel, breite, stellen));
        // Most numbers have no more digits than the field: then there is nothing to round.
        const double zehner = kZehner[std::clamp(stellen, 0, kSchnelleStellen)];
        const double verschoben = std::round(zahl * zehner);
        if (stellen <= kSchnelleStellen && std::abs(verschoben) < kZehner[kKurzeZahl] &&
            verschoben / zehner == zahl)
            return ergebnis(ganzeSchreiben(qint64(verschoben), ziel, breite, stellen, stellen));
    }
    std::optional<Dezimaltext> d = dezimaltextVon(wert, kKurzeZahl);
    if (!d) return Zahlergebnis::PasstNicht;
    const int mehr = d->nachkomma();
    if (mehr > stellen && dezimaltextSchreiben(*d, ziel, breite, mehr)) return Zahlergebnis::Genau;
    d = dezimaltextVon(wert, kAlleZiffern);
    runden(*d, stellen);
    if (!dezimaltextSchreiben(*d, ziel, breite, stellen)) return Zahlergebnis::PasstNicht;
    return mehr > stellen ? Zahlergebnis::Gerundet : Zahlergebnis::Genau;
}

}  // namespace dbase
