// LvProp, the properties of tables and columns, and what travels with a copied column.
#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/katalog_lesen.h"

namespace jet {
namespace {

constexpr quint16 kNamensblock = 0x80;
constexpr int kBlockKopf = 6;
constexpr int kEigenschaftKopf = 8;
constexpr QStringView kName = u"LvProp";

std::vector<QString> namenblockLesen(const Format& format, const Sicht& s) {
    std::vector<QString> namen;
    for (qint64 ort = 0; ort < s.groesse();) {
        const int laenge = s.u16(ort);
        namen.push_back(namenLesen(format, s.teil(ort + 2, laenge)));
        ort += 2 + laenge;
    }
    return namen;
}

Eigenschaft eigenschaftLesen(const Sicht& s, const std::vector<QString>& namen) {
    const int name = s.u16(4);
    if (size_t(name) >= namen.size()) s.kaputt(4);
    return {namen[size_t(name)], s.u8(2), s.u8(3), s.teil(kEigenschaftKopf, s.u16(6)).toByteArray()};
}

Eigenschaftsblock blockLesen(const Format& format, quint16 art, const Sicht& s,
                             const std::vector<QString>& namen) {
    Eigenschaftsblock block;
    block.art = art;
    block.name = namenLesen(format, s.teil(6, s.u16(4)));
    for (qint64 ort = s.u32(0); ort < s.groesse();) {
        const int laenge = s.u16(ort);
        if (laenge < kEigenschaftKopf) s.kaputt(ort);
        block.liste.push_back(eigenschaftLesen(s.sicht(ort, laenge), namen));
        ort += laenge;
    }
    return block;
}

void bloeckeLesen(const Format& format, const Sicht& s, std::vector<Eigenschaftsblock>& bloecke) {
    std::vector<QString> namen;
    for (qint64 ort = 4; ort < s.groesse();) {
        const qint64 laenge = s.u32(ort);
        if (laenge < kBlockKopf) s.kaputt(ort);
        const quint16 art = s.u16(ort + 4);
        const Sicht inhalt = s.sicht(ort + kBlockKopf, laenge - kBlockKopf);
        if (art == kNamensblock)
            namen = namenblockLesen(format, inhalt);
        else
            bloecke.push_back(blockLesen(format, art, inhalt, namen));
        ort += laenge;
    }
}

constexpr QByteArrayView kKennung("LGJ1", 4);

}  // namespace

std::vector<Eigenschaftsblock> eigenschaftenLesen(const Format& format, QByteArrayView bytes) {
    std::vector<Eigenschaftsblock> bloecke;
    const QByteArrayView kennung = format.jet4 ? QByteArrayView("MR2\0", 4) : QByteArrayView("KKD\0", 4);
    if (!bytes.startsWith(kennung)) return bloecke;
    try {
        bloeckeLesen(format, Sicht(bytes, kName, 0), bloecke);
    } catch (const EngineFehler&) {
        // Captions and formats are no reason to keep a user from the table: what was read so far counts.
    }
    return bloecke;
}

QByteArray spalteneigenesSchreiben(const Spalteneigenes& eigenes) {
    QByteArray bytes = kKennung.toByteArray();
    u8Anhaengen(bytes, eigenes.jet4);
    u8Anhaengen(bytes, eigenes.typ);
    u8Anhaengen(bytes, eigenes.flags);
    u8Anhaengen(bytes, eigenes.flags2);
    for (const Eigenschaft& e : eigenes.eigenschaften) {
        u32Anhaengen(bytes, quint32(e.name.size()));
        bytes.append(reinterpret_cast<const char*>(e.name.constData()), e.name.size() * 2);
        u8Anhaengen(bytes, e.ddl);
        u8Anhaengen(bytes, e.typ);
        u32Anhaengen(bytes, quint32(e.wert.size()));
        bytes.append(e.wert);
    }
    return bytes;
}

bool spalteneigenesLesen(QByteArrayView bytes, Spalteneigenes& eigenes) {
    if (!bytes.startsWith(kKennung)) return false;
    try {
        const Sicht s(bytes, kName, 0);
        eigenes = {s.u8(4) != 0, s.u8(5), s.u8(6), s.u8(7), {}};
        for (qint64 ort = 8; ort < s.groesse();) {
            Eigenschaft e;
            const qint64 name = qint64(s.u32(ort)) * 2;
            e.name = namenLesen(kJet4, s.teil(ort + 4, name));
            ort += 4 + name;
            e.ddl = s.u8(ort);
            e.typ = s.u8(ort + 1);
            e.wert = s.teil(ort + 6, s.u32(ort + 2)).toByteArray();
            ort += 6 + e.wert.size();
            eigenes.eigenschaften.push_back(std::move(e));
        }
        return true;
    } catch (const EngineFehler&) {
        return false;
    }
}

}  // namespace jet
