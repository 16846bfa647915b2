// A row put together.
#include "engine/jet/zeilenbau.h"

#include <algorithm>

#include "engine/jet/bytes.h"

namespace jet {
namespace {

constexpr quint8 kSprungAttrappe = 0xFF;

// Boolean has no bytes at all.
bool istVariabel(const Spalte& spalte) {
    return !spalte.istFest() && spalte.typ != kTypBoolean;
}

int maskenlaenge(const Tabelle& tabelle) {
    return (tabelle.maxSpalten + 7) / 8;
}

void festenTeilAnhaengen(QByteArray& zeile, const Tabelle& tabelle, const Rohsichten& werte) {
    const qsizetype anfang = zeile.size();
    zeile.append(festerTeil(tabelle), '\0');
    for (size_t i = 0; i < werte.size(); ++i) {
        const Spalte& spalte = tabelle.spalten[i];
        if (!spalte.istFest() || spalte.typ == kTypBoolean || !werte[i]) continue;
        if (werte[i]->size() != spalte.laenge) beschaedigt(tabelle.name, tabelle.seite());
        bytesSetzen(zeile, anfang + spalte.fest, *werte[i]);
    }
}

void nullmaskeAnhaengen(QByteArray& zeile, const Tabelle& tabelle, const Rohsichten& werte) {
    const qsizetype anfang = zeile.size();
    zeile.append(maskenlaenge(tabelle), '\0');
    char* const maske = zeile.data() + anfang;
    for (size_t i = 0; i < werte.size(); ++i) {
        if (!werte[i]) continue;
        const int nummer = tabelle.spalten[i].nummer;
        maske[nummer / 8] = char(quint8(maske[nummer / 8]) | 1u << (nummer % 8));
    }
}

// The variable values by their place in the row; Null has no bytes.
std::vector<QByteArrayView> variableWerte(const Tabelle& tabelle, const Rohsichten& werte) {
    std::vector<QByteArrayView> variable(tabelle.variable);
    for (size_t i = 0; i < werte.size(); ++i)
        if (istVariabel(tabelle.spalten[i]) && werte[i]) variable.at(tabelle.spalten[i].variabel) = *werte[i];
    return variable;
}

// Behind the values: the end of the last one, then the starts backwards, then their number.
void stellenAnhaengen4(QByteArray& zeile, const std::vector<qsizetype>& stellen) {
    std::vector<quint16> zahlen(stellen.rbegin(), stellen.rend());
    zahlen.push_back(quint16(stellen.size() - 1));
    bytesAnhaengen(zeile, zahlen.data(), qsizetype(zahlen.size() * sizeof(quint16)));
}

// Jump entry j: the first place in the list (the end counting as the last) that lies at 256 * j or beyond.
QByteArray spruengeBauen(const std::vector<qsizetype>& stellen, qsizetype anzahl) {
    QByteArray spruenge;
    for (qsizetype j = anzahl; j >= 1; --j) {
        const auto da =
            std::find_if(stellen.begin(), stellen.end(), [j](qsizetype s) { return s >= 256 * j; });
        u8Anhaengen(spruenge, da == stellen.end() ? kSprungAttrappe : quint8(da - stellen.begin()));
    }
    return spruenge;
}

// The row's length decides on the number of jump entries, which count into the length.
qsizetype sprungzahl(qsizetype laengeOhne) {
    qsizetype anzahl = 0;
    while ((laengeOhne + anzahl - 1) / 256 != anzahl) ++anzahl;
    return anzahl;
}

qsizetype laengeOhneSpruenge3(const Tabelle& tabelle, qsizetype werteEnde) {
    return werteEnde + tabelle.variable + 2 + maskenlaenge(tabelle);
}

void stellenAnhaengen3(QByteArray& zeile, const Tabelle& tabelle, const std::vector<qsizetype>& stellen) {
    const qsizetype spruenge = sprungzahl(laengeOhneSpruenge3(tabelle, zeile.size()));
    for (size_t i = stellen.size(); i-- > 0;) u8Anhaengen(zeile, quint8(stellen[i]));
    zeile += spruengeBauen(stellen, spruenge);
    u8Anhaengen(zeile, quint8(stellen.size() - 1));
}

}  // namespace

int festerTeil(const Tabelle& tabelle) {
    int ende = 0;
    for (const Spalte& spalte : tabelle.spalten)
        if (spalte.istFest() && spalte.typ != kTypBoolean) ende = std::max(ende, spalte.fest + spalte.laenge);
    return ende;
}

Rohsichten sichten(const Rohwerte& werte) {
    return Rohsichten(werte.begin(), werte.end());
}

qsizetype variableBytes(const Tabelle& tabelle, const Rohsichten& werte) {
    qsizetype bytes = 0;
    for (size_t i = 0; i < werte.size(); ++i)
        if (istVariabel(tabelle.spalten[i]) && werte[i]) bytes += werte[i]->size();
    return bytes;
}

qsizetype zeilenlaenge(const Format& format, const Tabelle& tabelle, qsizetype variableBytes) {
    const qsizetype ende = format.zeileKopf + festerTeil(tabelle) + variableBytes;
    if (tabelle.variable == 0) return ende + maskenlaenge(tabelle);
    if (format.jet4) return ende + 2 * (tabelle.variable + 2) + maskenlaenge(tabelle);
    const qsizetype ohne = laengeOhneSpruenge3(tabelle, ende);
    return ohne + sprungzahl(ohne);
}

QByteArray zeileBauen(const Format& format, const Tabelle& tabelle, const Rohsichten& werte) {
    Q_ASSERT(werte.size() == tabelle.spalten.size());
    QByteArray zeile;
    zeile.reserve(zeilenlaenge(format, tabelle, variableBytes(tabelle, werte)));
    if (format.jet4)
        u16Anhaengen(zeile, tabelle.maxSpalten);
    else
        u8Anhaengen(zeile, quint8(tabelle.maxSpalten));
    festenTeilAnhaengen(zeile, tabelle, werte);
    if (tabelle.variable > 0) {
        std::vector<qsizetype> stellen;
        stellen.reserve(size_t(tabelle.variable) + 1);
        for (const QByteArrayView wert : variableWerte(tabelle, werte)) {
            stellen.push_back(zeile.size());
            bytesAnhaengen(zeile, wert.data(), wert.size());
        }
        stellen.push_back(zeile.size());
        if (format.jet4)
            stellenAnhaengen4(zeile, stellen);
        else
            stellenAnhaengen3(zeile, tabelle, stellen);
    }
    nullmaskeAnhaengen(zeile, tabelle, werte);
    return zeile;
}

}  // namespace jet
