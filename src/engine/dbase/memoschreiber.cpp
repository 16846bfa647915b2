// Writes the memo file of a new table.
#include "engine/dbase/memoschreiber.h"

#include <QtEndian>

namespace dbase {
namespace {

constexpr int kVorspann = 8;                  // before a text of dBase IV
constexpr QByteArrayView kEnde = "\x1A\x1A";  // behind one of dBase III
// Some readers of dBase IV memos look for this byte behind the text; to all others it is filler.
constexpr char kFuellerVier = 0x1F;

template <typename T>
void zahlSetzen(QByteArray& bytes, qsizetype ab, T zahl) {
    qToLittleEndian<T>(zahl, bytes.data() + ab);
}

}  // namespace

qint64 memobloecke(qint64 bytes, int stufe) {
    return (bytes + (stufe == 3 ? kEnde.size() : kVorspann) + kMemoblock - 1) / kMemoblock;
}

QByteArray memoKopfname(const QByteArray& tabelle) {
    return tabelle.toUpper().leftJustified(8, '\0', true);
}

Memoschreiber::Memoschreiber(const QString& pfad, const QString& name, QByteArray tabelle, int stufe)
    : datei_(pfad, name), tabelle_(std::move(tabelle)), stufe_(stufe) {
    datei_.auffuellen('\0', kMemoblock);
}

qint64 Memoschreiber::ablegen(const QByteArray& text) {
    const qint64 block = naechster_;
    const qint64 bloecke = memobloecke(text.size(), stufe_);
    qint64 laenge = text.size();
    if (stufe_ == 3) {
        datei_.anhaengen(text);
        datei_.anhaengen(kEnde.data(), kEnde.size());
        laenge += kEnde.size();
    } else {
        QByteArray vorspann("\xFF\xFF\x08\x00\0\0\0\0", kVorspann);
        zahlSetzen<quint32>(vorspann, 4, quint32(text.size() + kVorspann));
        datei_.anhaengen(vorspann);
        datei_.anhaengen(text);
        laenge += kVorspann;
    }
    datei_.auffuellen(stufe_ == 3 ? '\0' : kFuellerVier, bloecke * kMemoblock - laenge);
    naechster_ += bloecke;
    return block;
}

void Memoschreiber::abschliessen() {
    QByteArray kopf(kMemoblock, '\0');
    zahlSetzen<quint32>(kopf, 0, quint32(naechster_));
    if (stufe_ == 3) {
        kopf[16] = 0x03;
    } else {
        kopf.replace(8, 8, memoKopfname(tabelle_));
        kopf[18] = 0x02;
        kopf[19] = 0x01;
        zahlSetzen<quint16>(kopf, 20, kMemoblock);
    }
    datei_.anfangErsetzen(kopf);
}

}  // namespace dbase
