// Properties written.
#include "engine/jet/lvprop.h"

#include <QStringList>

#include "engine/jet/bytes.h"
#include "engine/jet/namen.h"

namespace jet {
namespace {

constexpr quint16 kNamensblock = 0x80;
constexpr quint16 kSpaltenblock = 1;
constexpr quint8 kDdl = 1;
constexpr int kBlockKopf = 6;
constexpr int kEigenschaftKopf = 8;

QByteArray mitLaenge16(const QByteArray& bytes) {
    QByteArray satz;
    u16Anhaengen(satz, quint16(bytes.size()));
    return satz + bytes;
}

QByteArray block(quint16 art, const QByteArray& inhalt) {
    QByteArray bytes;
    u32Anhaengen(bytes, quint32(kBlockKopf + inhalt.size()));
    u16Anhaengen(bytes, art);
    return bytes + inhalt;
}

QStringList alleNamen(const std::vector<Eigenschaftsblock>& bloecke) {
    QStringList namen;
    for (const Eigenschaftsblock& b : bloecke)
        for (const Eigenschaft& e : b.liste)
            if (!namen.contains(e.name)) namen.append(e.name);
    return namen;
}

QByteArray eigenschaft(const Eigenschaft& e, qsizetype name) {
    QByteArray bytes;
    u16Anhaengen(bytes, quint16(kEigenschaftKopf + e.wert.size()));
    u8Anhaengen(bytes, e.ddl);
    u8Anhaengen(bytes, e.typ);
    u16Anhaengen(bytes, quint16(name));
    return bytes + mitLaenge16(e.wert);
}

QByteArray blockInhalt(const Format& format, const Eigenschaftsblock& b, const QStringList& namen) {
    const QByteArray name = mitLaenge16(namenBytes(format, b.name));
    QByteArray inhalt;
    u32Anhaengen(inhalt, quint32(4 + name.size()));
    inhalt += name;
    for (const Eigenschaft& e : b.liste) inhalt += eigenschaft(e, namen.indexOf(e.name));
    return inhalt;
}

Eigenschaft janein(const QString& name) {
    return {name, kDdl, kTypBoolean, QByteArray(1, '\1')};
}

Eigenschaftsblock blockDesFeldes(const Format& format, const engine::FeldDef& feld) {
    Eigenschaftsblock b{kSpaltenblock, feld.name, {}};
    const bool text = feld.typ == dao::dbText || feld.typ == dao::dbMemo;
    if (feld.leerErlaubt && text) b.liste.push_back(janein(u"AllowZeroLength"_qs));
    if (feld.erforderlich) b.liste.push_back(janein(u"Required"_qs));
    Spalteneigenes eigenes;
    if (spalteneigenesLesen(feld.formatEigenes, eigenes) && eigenes.jet4 == format.jet4)
        b.liste.insert(b.liste.end(), eigenes.eigenschaften.begin(), eigenes.eigenschaften.end());
    return b;
}

}  // namespace

QByteArray eigenschaftenSchreiben(const Format& format, const std::vector<Eigenschaftsblock>& bloecke) {
    if (bloecke.empty()) return {};
    const QStringList namen = alleNamen(bloecke);
    QByteArray namenInhalt;
    for (const QString& name : namen) namenInhalt += mitLaenge16(namenBytes(format, name));
    QByteArray bytes = (format.jet4 ? QByteArrayView("MR2\0", 4) : QByteArrayView("KKD\0", 4)).toByteArray();
    bytes += block(kNamensblock, namenInhalt);
    for (const Eigenschaftsblock& b : bloecke) bytes += block(b.art, blockInhalt(format, b, namen));
    return bytes;
}

std::vector<Eigenschaftsblock> eigenschaftenDerFelder(const Format& format,
                                                      const std::vector<engine::FeldDef>& felder) {
    std::vector<Eigenschaftsblock> bloecke;
    for (const engine::FeldDef& feld : felder) {
        Eigenschaftsblock b = blockDesFeldes(format, feld);
        if (!b.liste.empty()) bloecke.push_back(std::move(b));
    }
    return bloecke;
}

}  // namespace jet
