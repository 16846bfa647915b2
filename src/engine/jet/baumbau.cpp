// Index trees from sorted entries: leaves first, then level by level up to the root.
#include "engine/jet/baumbau.h"

#include <algorithm>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/indexseite.h"
#include "engine/jet/seitenvergabe.h"

namespace jet {
namespace {

constexpr size_t kEintraegeJePause = 4096;

// Neighbours that go on one page: the first one, the one behind the last one.
struct Gruppe {
    size_t ab = 0;
    size_t bis = 0;
    int praefix = 0;
    size_t zahl() const { return bis - ab; }
};

// A page that is written, as its parent sees it: the place of the last entry below it.
struct Kind {
    quint32 seite = 0;
    size_t letzter = 0;
};

qsizetype gemeinsam(QByteArrayView a, QByteArrayView b) {
    const qsizetype laenge = std::min(a.size(), b.size());
    return std::mismatch(a.begin(), a.begin() + laenge, b.begin()).first - a.begin();
}

class Baumbau {
  public:
    Baumbau(Seitendatei& datei, Seitenvergabe& vergabe, quint32 besitzer, const Indexeintraege& eintraege,
            Baumseiten& seiten)
        : datei_(datei), vergabe_(vergabe), besitzer_(besitzer), eintraege_(eintraege), seiten_(seiten) {}

    void bauen() {
        std::vector<Kind> ebene = blaetterSchreiben();
        for (quint8 hoehe = 1; ebene.size() > 1; ++hoehe) ebene = ebeneSchreiben(ebene, hoehe);
        std::sort(seiten_.belegte.begin(), seiten_.belegte.end());
    }

  private:
    // Numbers for the pages of a level; a level of one page is the root.
    std::vector<quint32> nummern(size_t anzahl) {
        std::vector<quint32> liste;
        for (size_t i = 0; i < anzahl; ++i) liste.push_back(nummer(anzahl == 1));
        seiten_.belegte.insert(seiten_.belegte.end(), liste.begin(), liste.end());
        return liste;
    }

    quint32 nummer(bool wurzel) {
        if (wurzel && seiten_.wurzel != 0) return seiten_.wurzel;
        quint32 seite = 0;
        if (seiten_.vorhandene.empty()) {
            seite = vergabe_.belegen();
        } else {
            seite = seiten_.vorhandene.front();
            seiten_.vorhandene.erase(seiten_.vorhandene.begin());
        }
        if (wurzel) seiten_.wurzel = seite;
        return seite;
    }

    // As many entries as fit, all but the first one without what all keys of the page begin with.
    Gruppe naechstesBlatt(size_t ab) const {
        const int breite = datei_.format().indexPraefixBreite == 1 ? 0xFF : 0xFFFF;
        const QByteArrayView erster = eintraege_.schluessel(ab);
        Gruppe gruppe{ab, ab + 1, int(std::min<qsizetype>(erster.size(), breite))};
        qsizetype bytes = eintraege_.eintrag(ab).size();  // without any prefix
        while (gruppe.bis < eintraege_.anzahl()) {
            const QByteArrayView schluessel = eintraege_.schluessel(gruppe.bis);
            const int praefix = int(std::min<qsizetype>(gruppe.praefix, gemeinsam(erster, schluessel)));
            bytes += schluessel.size() + kBlattTrailer;
            if (bytes - praefix * qsizetype(gruppe.zahl()) > eintragsbytes(datei_.format())) return gruppe;
            gruppe.praefix = praefix;
            ++gruppe.bis;
        }
        return gruppe;
    }

    std::vector<Gruppe> blaetterTeilen() const {
        std::vector<Gruppe> gruppen;
        for (size_t ab = 0; ab < eintraege_.anzahl(); ab = gruppen.back().bis) {
            Atempause();
            gruppen.push_back(naechstesBlatt(ab));
        }
        if (gruppen.empty()) gruppen.push_back({});
        return gruppen;
    }

    std::vector<Kind> blaetterSchreiben() {
        const std::vector<Gruppe> gruppen = blaetterTeilen();
        const std::vector<quint32> liste = nummern(gruppen.size());
        std::vector<Kind> kinder;
        for (size_t i = 0; i < gruppen.size(); ++i) {
            Atempause();
            Indexseitenkopf kopf;
            kopf.besitzer = besitzer_;
            kopf.vorige = i == 0 ? 0 : liste[i - 1];
            kopf.naechste = i + 1 == liste.size() ? 0 : liste[i + 1];
            std::vector<QByteArrayView> zeilen;
            for (size_t e = gruppen[i].ab; e < gruppen[i].bis; ++e) zeilen.push_back(eintraege_.eintrag(e));
            // A prefix of a single entry shortens nothing.
            const int praefix = gruppen[i].zahl() > 1 ? gruppen[i].praefix : 0;
            datei_.schreiben(liste[i], indexseiteBauen(datei_.format(), kopf, zeilen, praefix));
            kinder.push_back({liste[i], gruppen[i].bis - 1});
        }
        return kinder;
    }

    qsizetype laenge(const Kind& kind) const {
        return eintraege_.eintrag(kind.letzter).size() + kInnererTrailer - kBlattTrailer;
    }

    // The last child of a page needs no entry. A page with a single child gets one from its left neighbour,
    // as long as that one keeps two.
    std::vector<Gruppe> kinderTeilen(const std::vector<Kind>& kinder) const {
        std::vector<Gruppe> gruppen{{0, 1}};
        qsizetype bytes = 0;
        for (size_t i = 1; i < kinder.size(); ++i) {
            bytes += laenge(kinder[i - 1]);
            if (bytes > eintragsbytes(datei_.format())) {
                gruppen.push_back({i, i});
                bytes = 0;
            }
            gruppen.back().bis = i + 1;
        }
        Gruppe& letzte = gruppen.back();
        if (gruppen.size() > 1 && letzte.zahl() == 1 && gruppen[gruppen.size() - 2].zahl() > 2)
            gruppen[gruppen.size() - 2].bis = --letzte.ab;
        return gruppen;
    }

    // One level over `kinder`. Pages are linked with those of the same parent only, which are known one level
    // later: pages of a level are linked when their parent is written.
    std::vector<Kind> ebeneSchreiben(const std::vector<Kind>& kinder, quint8 hoehe) {
        const std::vector<Gruppe> gruppen = kinderTeilen(kinder);
        const std::vector<quint32> liste = nummern(gruppen.size());
        std::vector<Kind> ebene;
        for (size_t i = 0; i < gruppen.size(); ++i) {
            Atempause();
            if (hoehe > 1) geschwisterVerbinden(kinder, gruppen[i]);
            inneresSchreiben(liste[i], kinder, gruppen[i], hoehe);
            ebene.push_back({liste[i], kinder[gruppen[i].bis - 1].letzter});
        }
        return ebene;
    }

    void inneresSchreiben(quint32 nummer, const std::vector<Kind>& kinder, const Gruppe& gruppe,
                          quint8 hoehe) {
        Indexseitenkopf kopf;
        kopf.blatt = false;
        kopf.besitzer = besitzer_;
        kopf.ebene = hoehe;
        kopf.letztesKind = kinder[gruppe.bis - 1].seite;
        std::vector<QByteArray> zeilen;
        for (size_t i = gruppe.ab; i + 1 < gruppe.bis; ++i) {
            zeilen.push_back(eintraege_.eintrag(kinder[i].letzter).toByteArray());
            u32beAnhaengen(zeilen.back(), kinder[i].seite);
        }
        datei_.schreiben(nummer, indexseiteBauen(datei_.format(), kopf, {zeilen.begin(), zeilen.end()}, 0));
    }

    void geschwisterVerbinden(const std::vector<Kind>& kinder, const Gruppe& gruppe) {
        const Format& format = datei_.format();
        for (size_t i = gruppe.ab; i < gruppe.bis; ++i) {
            QByteArray seite = datei_.seite(kinder[i].seite);
            u32Setzen(seite, format.indexVorige, i == gruppe.ab ? 0 : kinder[i - 1].seite);
            u32Setzen(seite, format.indexNaechste, i + 1 == gruppe.bis ? 0 : kinder[i + 1].seite);
            datei_.schreiben(kinder[i].seite, seite);
        }
    }

    Seitendatei& datei_;
    Seitenvergabe& vergabe_;
    quint32 besitzer_;
    const Indexeintraege& eintraege_;
    Baumseiten& seiten_;
};

void laengenPruefen(const Format& format, const Indexeintraege& eintraege, const QString& name) {
    const qsizetype hoechstens = eintragsbytes(format) - (kInnererTrailer - kBlattTrailer);
    for (size_t i = 0; i < eintraege.anzahl(); ++i) {
        if (i % kEintraegeJePause == 0) Atempause();
        if (eintraege.eintrag(i).size() > hoechstens)
            throw EngineFehler(
                kSystemgrenze,
                u"Ein Datensatz hat für den Index '%1' zu lange Werte. Kürzen Sie die Werte der "
                "indizierten Felder oder entfernen Sie den Index."_qs.arg(name));
    }
}

}  // namespace

void baumBauen(Seitendatei& datei, Seitenvergabe& vergabe, quint32 besitzer, const Indexeintraege& eintraege,
               const QString& name, Baumseiten& seiten) {
    laengenPruefen(datei.format(), eintraege, name);
    Baumbau(datei, vergabe, besitzer, eintraege, seiten).bauen();
}

}  // namespace jet
