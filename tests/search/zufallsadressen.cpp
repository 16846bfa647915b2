// Prepared address rows drawn at random.
#include "search/zufallsadressen.h"

const std::vector<FeldZuordnungen>& Zufallszuordnungen() {
    static const std::vector<FeldZuordnungen> alle{
        {{1, 1}, {2, 3}, {4, 1}, {4, 2}, {4, 4}, {3, 1}, {3, 4}, {3, 8}, {5, 1}, {5, 2}},
        {{2, 1}, {2, 2}, {2, 4}, {3, 3}, {3, 12}, {5, 3}, {6, 1}},
        {{0, 1}, {2, 1}, {0, 0}, {3, 3}, {3, 4}, {3, 8}, {6, 2}},
        {{4, 7}, {4, 8}, {3, 12}, {5, 5}, {5, 4}},
        {{4, 6}, {3, 2}, {3, 32}, {3, 8}, {2, 8}},
        {{3, 4}},
        {{4, 4}, {4, 2}},
    };
    return alle;
}

QString Zufallsadressen::ziffern(int laenge) {
    QString text;
    for (int i = 0; i < laenge; ++i) text += QChar(u'0' + zahl(0, vielfalt_ < 5 ? 1 : 9));
    return text;
}

// A word with a few letters in a row of its own, so that one often stands inside of another.
QString Zufallsadressen::name() {
    static const char16_t* const silben[] = {u"mei", u"er", u"hof",  u"sch", u"ulz",
                                             u"a",   u"ö",  u"berg", u"in"};
    QString text;
    const int nummer = zahl(0, vielfalt_);
    for (int rest = nummer + 1; rest > 0; rest /= 9) text += QString::fromUtf16(silben[rest % 9]);
    return text;
}

Wert Zufallsadressen::wert(const FeldZuordnung& zuordnung) {
    switch (zahl(0, 19)) {
        case 0:
            return Wert::null();
        case 1:
            return Wert(u"");
        case 2:
            return Wert(u" ");
        case 3:
            return Wert(QString(name() + QStringLiteral("  ") + name()));
        default:
            break;
    }
    const bool nummer = (zuordnung.Gruppe == 3 && (zuordnung.Maske == 4 || zuordnung.Maske == 2)) ||
                        (zuordnung.Gruppe == 5 && zuordnung.Maske != 3 && zuordnung.Maske != 5);
    if (nummer) return zahl(0, 9) == 0 ? Wert(qint64(zahl(1, 10 * vielfalt_))) : Wert(ziffern(zahl(3, 10)));
    switch (zuordnung.Gruppe) {
        case 2:
            return Wert(QString(name() + u' ' + (zahl(0, 1) ? QStringLiteral("GmbH") : QString())));
        case 3:
            return Wert(
                QString(zahl(0, 1) ? name() + u' ' + ziffern(zahl(1, 2)) : ziffern(5) + u' ' + name()));
        case 5:
            return Wert(QString(u'0' + ziffern(3) + u' ' + ziffern(zahl(4, 6))));
        default:
            break;
    }
    QString text = zahl(0, 3) == 0 ? QStringLiteral("herr dr.") : name();
    for (int n = zahl(0, 2); n > 0; --n) text += u' ' + name();
    return Wert(text);
}

Zeile Zufallsadressen::zeile(const FeldZuordnungen& zuordnungen) {
    Zeile ergebnis;
    for (const FeldZuordnung& zuordnung : zuordnungen)
        if (!FeldIgnoriert(zuordnung)) ergebnis.push_back(wert(zuordnung));
    return ergebnis;
}

std::vector<Zeile> Zufallsadressen::zeilen(const FeldZuordnungen& zuordnungen, int anzahl) {
    std::vector<Zeile> ergebnis;
    for (int i = 0; i < anzahl; ++i) {
        // Every third row is another one with a field changed, so that there is something to find.
        if (!ergebnis.empty() && zahl(0, 2) == 0) {
            Zeile kopie = ergebnis[size_t(zahl(0, int(ergebnis.size()) - 1))];
            const Zeile neu = zeile(zuordnungen);
            if (!kopie.empty()) {
                const size_t feld = size_t(zahl(0, int(kopie.size()) - 1));
                kopie[feld] = neu[feld];
            }
            ergebnis.push_back(kopie);
        } else {
            ergebnis.push_back(zeile(zuordnungen));
        }
    }
    return ergebnis;
}
