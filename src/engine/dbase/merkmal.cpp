// What a column brings along into a copy.
#include "engine/dbase/merkmal.h"

#include <QList>

namespace dbase {
namespace {

constexpr QByteArrayView kVorsatz = "dbf";
constexpr qsizetype kTeile = 10;

}  // namespace

QByteArray merkmalSchreiben(const Merkmal& m) {
    QByteArray text = kVorsatz.toByteArray();
    for (const int zahl : {int(m.art), m.laenge, m.stellen, m.feldtyp, int(m.sprachbyte), m.seite.seite,
                           int(m.seite.herkunft), m.stufe, int(m.hindernis)})
        text += ';' + QByteArray::number(zahl);
    return text;
}

std::optional<Merkmal> merkmalLesen(const QByteArray& bytes) {
    const QList<QByteArray> teile = bytes.split(';');
    if (teile.size() != kTeile || teile[0] != kVorsatz) return std::nullopt;
    const auto zahl = [&](qsizetype i) { return teile[i].toInt(); };
    Merkmal m;
    m.art = char(zahl(1));
    m.laenge = zahl(2);
    m.stellen = zahl(3);
    m.feldtyp = zahl(4);
    m.sprachbyte = quint8(zahl(5));
    m.seite = {zahl(6), Seitenwahl::Herkunft(zahl(7))};
    m.stufe = zahl(8);
    m.hindernis = Merkmal::Hindernis(zahl(9));
    return m;
}

}  // namespace dbase
