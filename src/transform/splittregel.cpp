// What a split makes of a record's values.
#include "transform/splittregel.h"

#include "fields/parser.h"

namespace {

bool nichts(const Wert& wert) {
    return wert.istLeerOderNull() || (wert.istText() && wert.text().isEmpty());
}

std::array<Wert, 3> vorwahlTelefonTelefax(const Wert& telefon, const Wert& telefax) {
    Wert vorwahl = VorwahlErmitteln(telefon);
    if (nichts(vorwahl)) vorwahl = VorwahlErmitteln(telefax);
    return {vorwahl, TelefonnummerErmitteln(telefon), TelefonnummerErmitteln(telefax)};
}

std::array<Wert, 3> amTrennzeichen(const Wert& wert, const QString& trennzeichen) {
    const QString text = wert.alsText();
    const qsizetype stelle = text.indexOf(trennzeichen);
    if (stelle < 0) return {wert, Wert(), Wert()};
    return {Wert(text.left(stelle)), Wert(text.mid(stelle + 1)), Wert()};
}

std::array<Wert, 3> zerlegen(Splittart art, const Wert& erster, const Wert& zweiter,
                             const QString& trennzeichen) {
    switch (art) {
        case Splittart::PlzOrt:
            return {PostleitzahlErmitteln(erster), OrtErmitteln(erster), Wert()};
        case Splittart::StrasseHausnummer:
            return {StrasseErmitteln(erster), HausnummerErmitteln(erster), Wert()};
        case Splittart::AnredeVornameName:
            return {AnredeErmitteln(erster), VornameErmitteln(erster), NachnameErmitteln(erster)};
        case Splittart::VorwahlDurchwahl:
            return {VorwahlErmitteln(erster), TelefonnummerErmitteln(erster), Wert()};
        case Splittart::VorwahlTelefonTelefax:
            return vorwahlTelefonTelefax(erster, zweiter);
        case Splittart::Trennzeichen:
            return amTrennzeichen(erster, trennzeichen);
    }
    return {};
}

}  // namespace

int NeueFelder(Splittart art) {
    return art == Splittart::AnredeVornameName || art == Splittart::VorwahlTelefonTelefax ? 3 : 2;
}

std::array<Wert, 3> Splitten(Splittart art, const Wert& erster, const Wert& zweiter,
                             const QString& trennzeichen) {
    std::array<Wert, 3> teile;
    if (!nichts(erster)) teile = zerlegen(art, erster, zweiter, trennzeichen);
    const bool zweiterFehlt = nichts(teile[1]);
    for (Wert& teil : {std::ref(teile[0]), std::ref(teile[1])})
        if (nichts(teil)) teil = Wert::null();
    if (zweiterFehlt || teile[2].istLeer()) teile[2] = Wert::null();
    return teile;
}
