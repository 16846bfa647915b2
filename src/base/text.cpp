// Text helpers of the whole program.
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "base/fehler.h"

namespace {

QString gefaltet(const Wert& wert, QString (*abbildung)(QStringView), const QString& szett) {
    if (wert.istNull())
        throw EngineFehler(kUngueltigeNullVerwendung, QStringLiteral("Unzulässige Verwendung von Null."));
    return TextErsetzen(abbildung(wert.alsText()), QStringLiteral("ß"), szett);
}

constexpr size_t kTafelgroesse = 256;

// QChar maps one unit to one; "ß" has no single capital and stays.
template <typename Abbildung>
QString zeichenweise(QStringView text, Abbildung abbildung) {
    static const auto tafel = [&] {
        std::array<QChar, kTafelgroesse> bilder;
        for (size_t i = 0; i < bilder.size(); ++i)
            bilder[i] = QChar(ushort(i)) == u'ß' ? u'ß' : abbildung(QChar(ushort(i)));
        return bilder;
    }();
    QString ergebnis(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), ergebnis.begin(),
                   [&](QChar c) { return c.unicode() < tafel.size() ? tafel[c.unicode()] : abbildung(c); });
    return ergebnis;
}

}  // namespace

QString Trim(QStringView text) {
    while (text.startsWith(u' ')) text = text.mid(1);
    while (text.endsWith(u' ')) text.chop(1);
    return text.toString();
}

QString TextErsetzen(const QString& text, const QString& suche, const QString& ersatz) {
    Q_ASSERT(!suche.isEmpty());
    QString ergebnis;
    qsizetype start = 0;
    for (qsizetype fund = text.indexOf(suche); fund >= 0; fund = text.indexOf(suche, start)) {
        ergebnis += QStringView(text).mid(start, fund - start);
        ergebnis += ersatz;
        start = fund + suche.size();
    }
    if (start == 0) return text;
    return ergebnis += QStringView(text).mid(start);
}

QString TextEntfernen(const QString& text, const QString& suche) {
    return TextErsetzen(text, suche, QString());
}

QString GrossZeichenweise(QStringView text) {
    return zeichenweise(text, [](QChar c) { return c.toUpper(); });
}

QString KleinZeichenweise(QStringView text) {
    return zeichenweise(text, [](QChar c) { return c.toLower(); });
}

QString Grossschrift(const Wert& wert) {
    return gefaltet(wert, GrossZeichenweise, QStringLiteral("SS"));
}

QString Kleinschrift(const Wert& wert) {
    return gefaltet(wert, KleinZeichenweise, QStringLiteral("ss"));
}

Wert Wort(const Wert& wert, int nummer) {
    if (wert.istLeerOderNull() || nummer == 0) return Wert();
    const QString text = wert.alsText();
    const bool rueckwaerts = nummer < 0;
    const qsizetype n = text.size();
    const auto zeichen = [&](qsizetype i) { return text[rueckwaerts ? n - 1 - i : i]; };
    int zaehler = 0;
    for (qsizetype i = 0; i < n;) {
        const qsizetype start = i;
        while (i < n && kWortZeichen.contains(zeichen(i))) ++i;
        if (i > start && ++zaehler == std::abs(nummer))
            return Wert(rueckwaerts ? text.mid(n - i, i - start) : text.mid(start, i - start));
        while (i < n && !kWortZeichen.contains(zeichen(i))) ++i;
    }
    return Wert();
}

bool BitGesetzt(int wert, int maske) {
    return (wert & maske) == maske;
}

bool TextLiestSichAlsZahl(QStringView text) {
    while (text.startsWith(u' ')) text = text.mid(1);
    while (text.endsWith(u' ')) text.chop(1);
    if (text.startsWith(u'+') || text.startsWith(u'-')) text = text.mid(1);
    int ziffern = 0;
    int trenner = 0;
    for (QChar c : text) {
        if (c >= u'0' && c <= u'9')
            ++ziffern;
        else if (c == u',' || c == u'.')
            ++trenner;
        else
            return false;
    }
    return ziffern > 0 && trenner <= 1;
}

bool LiestSichAlsZahl(const Wert& wert) {
    if (wert.istLeerOderNull()) return false;
    if (wert.art() == Wert::Art::DatumZeit) return false;
    return wert.istZahl() || wert.art() == Wert::Art::Wahrheit || TextLiestSichAlsZahl(wert.alsText());
}
