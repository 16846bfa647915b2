// Prepared values that a measure may stumble over.
#include "search/boesewerte.h"

QString BoeseWerte::wort() {
    static const char16_t* const stuecke[] = {u"a", u"b", u"ab", u"ba", u"mei", u"er",
                                              u"ö", u"ı", u"字", u"0",  u"1"};
    QString text;
    for (int n = zahl(1, 4); n > 0; --n) text += QString::fromUtf16(stuecke[zahl(0, 10)]);
    return text;
}

QString BoeseWerte::ziffern(int laenge) {
    QString text;
    for (int i = 0; i < laenge; ++i) text += QChar(u'0' + zahl(0, 9));
    return text;
}

Wert BoeseWerte::wert(int vielfalt) {
    static const char16_t* const feste[] = {u"",
                                            u" ",
                                            u"  ",
                                            u" a",
                                            u"a ",
                                            u"a  b",
                                            u"herr",
                                            u"frau dr.",
                                            u"gmbh",
                                            u"a gmbh",
                                            u"0221 1234",
                                            u"+49 221 1",
                                            u"12,5",
                                            u" 12",
                                            u"-7",
                                            u"12a",
                                            u"0",
                                            u"00",
                                            u"123456789",
                                            u"12345678",
                                            u"50667 köln",
                                            u"haupt 12",
                                            u"hr. dr. meier",
                                            u"字字 字",
                                            u"12字",
                                            u"co kg",
                                            u"1 2 3 4 5 6 7 8 9"};
    switch (zahl(0, 15)) {
        case 0:
            return zahl(0, 1) ? Wert::null() : Wert();
        case 1:
        case 2:
            return Wert(feste[zahl(0, int(std::size(feste)) - 1)]);
        case 3:
            return zahl(0, 3) ? Wert(qint64(zahl(0, vielfalt))) : Wert(zahl(0, vielfalt) / 4.0);
        case 4:
            return zahl(0, 9) ? Wert(wort()) : Wert(QStringLiteral("x ").repeated(zahl(20, 126)) + wort());
        case 5:
        case 6:
        case 7:
            return Wert(ziffern(zahl(1, vielfalt < 10 ? 3 : 10)));
        case 8:
            return Wert(QString(u'0' + ziffern(3) + u' ' + ziffern(zahl(4, 8))));
        default:
            break;
    }
    QString text = wort();
    for (int n = zahl(0, vielfalt < 10 ? 0 : 2); n > 0; --n) text += u' ' + wort();
    return Wert(text);
}

FeldZuordnungen BoeseWerte::zuordnung() {
    static const std::vector<FeldZuordnung> alle{
        {1, 1}, {2, 1},  {2, 2},  {2, 3}, {2, 4}, {2, 8}, {3, 1}, {3, 2}, {3, 3}, {3, 4},
        {3, 8}, {3, 12}, {3, 32}, {4, 1}, {4, 2}, {4, 4}, {4, 5}, {4, 6}, {4, 7}, {4, 8},
        {5, 1}, {5, 2},  {5, 3},  {5, 4}, {5, 5}, {6, 1}, {6, 2}, {0, 0}, {0, 1}};
    FeldZuordnungen zuordnung;
    for (int n = zahl(1, 12); n > 0; --n) zuordnung.push_back(alle[size_t(zahl(0, int(alle.size()) - 1))]);
    return zuordnung;
}

std::vector<std::vector<Wert>> BoeseWerte::zeilen(const FeldZuordnungen& zuordnungen, int anzahl) {
    std::vector<int> vielfalt;
    for (const FeldZuordnung& zuordnung : zuordnungen)
        if (!FeldIgnoriert(zuordnung)) vielfalt.push_back(zahl(0, 2) == 0 ? zahl(1, 9) : zahl(10, 100000));
    std::vector<std::vector<Wert>> vorrat(vielfalt.size());
    std::vector<std::vector<Wert>> ergebnis;
    for (int i = 0; i < anzahl; ++i) {
        std::vector<Wert> zeile;
        const bool kopie = i > 0 && zahl(0, 2) == 0;
        if (kopie) zeile = ergebnis[size_t(zahl(0, i - 1))];
        zeile.resize(vielfalt.size());
        for (size_t f = 0; f < vielfalt.size(); ++f) {
            if (kopie && zahl(0, 3) != 0) continue;
            // A field of few values draws them again and again.
            const bool wenige = vielfalt[f] < 10 && int(vorrat[f].size()) > vielfalt[f];
            zeile[f] = wenige ? vorrat[f][size_t(zahl(0, vielfalt[f]))] : wert(vielfalt[f]);
            vorrat[f].push_back(zeile[f]);
        }
        ergebnis.push_back(zeile);
    }
    return ergebnis;
}
