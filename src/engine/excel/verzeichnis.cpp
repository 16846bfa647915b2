// Counting the entries of a compound file.
#include "engine/excel/verzeichnis.h"

#include <QByteArray>
#include <vector>

#include "base/fehler.h"
#include "engine/excel/bytes.h"

namespace excel {
namespace {

constexpr quint32 kEndeDerKette = 0xFFFFFFFE;
constexpr quint32 kLetzterSektor = 0xFFFFFFF9;
constexpr quint32 kKeiner = 0xFFFFFFFF;
constexpr int kEintrag = 128;
constexpr int kKopfliste = 109;  // sectors of the allocation table that the header itself names
enum Kopfort { kSektorbreite = 0x1E, kVerzeichnis = 0x30, kErsteListe = 0x44, kListe = 0x4C };
enum Eintragsort { kArt = 66, kLinks = 68, kRechts = 72, kKind = 76 };

class Sektoren {
  public:
    explicit Sektoren(QByteArrayView datei) : datei_(datei), breite_(u16(datei, kSektorbreite)) {
        if (breite_ < 7 || breite_ > 16) beschaedigt();
        tafelLesen();
    }
    QByteArrayView sektor(quint32 nummer) const {
        return teil(datei_, (qsizetype(nummer) + 1) << breite_, qsizetype(1) << breite_);
    }
    // A chain longer than the file has sectors runs in a ring.
    QByteArray kette(quint32 nummer) const {
        QByteArray bytes;
        for (; nummer != kEndeDerKette; nummer = u32(tafel_, qsizetype(nummer) * 4)) {
            if (nummer > kLetzterSektor || bytes.size() > datei_.size()) beschaedigt();
            bytes += sektorBisEnde(nummer);
        }
        return bytes;
    }

  private:
    // The last sector of a file may be cut short.
    QByteArray sektorBisEnde(quint32 nummer) const {
        const qsizetype ab = (qsizetype(nummer) + 1) << breite_;
        const qsizetype groesse = qsizetype(1) << breite_;
        if (ab >= datei_.size()) beschaedigt();
        QByteArray bytes = datei_.sliced(ab, std::min(groesse, datei_.size() - ab)).toByteArray();
        return bytes.leftJustified(groesse, '\0');
    }
    void tafelLesen() {
        const auto dazu = [&](quint32 nummer) {
            if (nummer > kLetzterSektor) return;
            if (tafel_.size() > datei_.size()) beschaedigt();
            tafel_ += sektorBisEnde(nummer);
        };
        for (int i = 0; i < kKopfliste; ++i) dazu(u32(datei_, kListe + 4 * i));
        const int jeSektor = (1 << breite_) / 4 - 1;
        qsizetype gelesen = 0;
        for (quint32 nummer = u32(datei_, kErsteListe); nummer <= kLetzterSektor;) {
            const QByteArray liste = sektorBisEnde(nummer);
            if ((gelesen += liste.size()) > datei_.size()) beschaedigt();
            for (int i = 0; i < jeSektor; ++i) dazu(u32(liste, 4 * i));
            nummer = u32(liste, 4 * jeSektor);
        }
    }

    QByteArrayView datei_;
    int breite_;
    QByteArray tafel_;
};

int baumZaehlen(const QByteArray& verzeichnis) {
    std::vector<bool> gesehen(size_t(verzeichnis.size() / kEintrag));
    std::vector<quint32> offen{u32(verzeichnis, kKind)};
    int anzahl = 0;
    while (!offen.empty()) {
        const quint32 nummer = offen.back();
        offen.pop_back();
        if (nummer == kKeiner) continue;
        if (nummer >= gesehen.size() || gesehen[nummer]) return -1;
        gesehen[nummer] = true;
        ++anzahl;
        const qsizetype ab = qsizetype(nummer) * kEintrag;
        if (const quint8 art = u8(verzeichnis, ab + kArt); art != 1 && art != 2) return -1;
        for (const int ort : {kLinks, kRechts, kKind}) offen.push_back(u32(verzeichnis, ab + ort));
    }
    return anzahl;
}

}  // namespace

int verzeichniseintraege(QByteArrayView datei) {
    try {
        const Sektoren sektoren(datei);
        const QByteArray verzeichnis = sektoren.kette(u32(datei, kVerzeichnis));
        return verzeichnis.size() < kEintrag ? -1 : baumZaehlen(verzeichnis);
    } catch (const EngineFehler&) {
        return -1;
    }
}

}  // namespace excel
