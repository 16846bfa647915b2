// Names and the sheets they mean.
#include "engine/excel/bezuege.h"

#include "engine/excel/bytes.h"
#include "engine/excel/ketten.h"

namespace excel {
namespace {

constexpr quint16 kEigeneMappe = 0x0401;
constexpr int kEintragsgroesse = 6;
constexpr quint16 kSpaltenmaske8 = 0x00FF;
constexpr quint16 kZeilenmaske5 = 0x3FFF;

enum Formelzeichen : quint8 { kZelle3d = 0x1A, kBereich3d = 0x1B };

// The token without the bits of its class; -1 for one that is no 3-D reference.
int verweiszeichen(QByteArrayView formel) {
    if (formel.isEmpty()) return -1;
    const quint8 z = u8(formel, 0);
    return (z & 0x60) == 0 ? -1 : (z & 0x1F);
}

std::optional<Bereich> bereichLesen8(const Verweisliste& liste, QByteArrayView f, int& eintrag) {
    const int zeichen = verweiszeichen(f);
    const bool zelle = zeichen == kZelle3d && f.size() == 7;
    if (!zelle && !(zeichen == kBereich3d && f.size() == 11)) return {};
    eintrag = u16(f, 1);
    Bereich b;
    b.zeile1 = u16(f, 3);
    b.zeile2 = zelle ? b.zeile1 : u16(f, 5);
    b.spalte1 = u16(f, zelle ? 5 : 7) & kSpaltenmaske8;
    b.spalte2 = zelle ? b.spalte1 : u16(f, 9) & kSpaltenmaske8;
    if (size_t(eintrag) >= liste.eintraege().size()) return {};
    const Verweisliste::Eintrag& e = liste.eintraege()[size_t(eintrag)];
    if (!liste.istEigen(e) || e.erstes != e.letztes) return {};
    b.blatt = e.erstes;
    return b;
}

// The index of a BIFF5 token is negative for the workbook's own sheets, whose numbers it holds itself.
std::optional<Bereich> bereichLesen5(QByteArrayView f) {
    const int zeichen = verweiszeichen(f);
    const bool zelle = zeichen == kZelle3d && f.size() == 18;
    if (!zelle && !(zeichen == kBereich3d && f.size() == 21)) return {};
    if (qint16(u16(f, 1)) >= 0 || u16(f, 11) != u16(f, 13)) return {};
    Bereich b;
    b.blatt = u16(f, 11);
    b.zeile1 = u16(f, 15) & kZeilenmaske5;
    b.zeile2 = zelle ? b.zeile1 : u16(f, 17) & kZeilenmaske5;
    b.spalte1 = u8(f, zelle ? 17 : 19);
    b.spalte2 = zelle ? b.spalte1 : u8(f, 20);
    return b;
}

Definition definitionLesen(const Mappe& mappe, const Verweisliste& liste, const QByteArray& daten) {
    Definition d;
    if (daten.size() < kNamenskopf) return d;
    d.bits = u16(daten, 0);
    const int laenge = u8(daten, 3);
    const int formellaenge = u16(daten, 4);
    d.blatt = u16(daten, 8);
    const bool breit = mappe.biff8() && daten.size() > kNamenskopf && (u8(daten, kNamenskopf) & 1);
    d.formelort = kNamenskopf + (mappe.biff8() ? 1 : 0) + qsizetype(laenge) * (breit ? 2 : 1);
    if (daten.size() < d.formelort + formellaenge) return d;
    d.text = mappe.biff8() ? zeichen8(daten, kNamenskopf + 1, laenge, breit)
                           : mappe.codeseite().lesen(teil(daten, kNamenskopf, laenge));
    d.formel = daten.mid(d.formelort, formellaenge);
    d.bereich = mappe.biff8() ? bereichLesen8(liste, d.formel, d.eintrag) : bereichLesen5(d.formel);
    if (d.bereich && (size_t(d.bereich->blatt) >= mappe.blaetter().size() ||
                      d.bereich->zeile1 > d.bereich->zeile2 || d.bereich->spalte1 > d.bereich->spalte2))
        d.bereich.reset();
    return d;
}

}  // namespace

Verweisliste::Verweisliste(const Mappe& mappe) {
    const auto& saetze = mappe.globale();
    int nummer = 0;
    QByteArray bytes;
    for (size_t i = 0; i < saetze.size(); ++i) {
        if (saetze[i].typ == kSupbook) {
            if (saetze[i].daten.size() == 4 && u16(saetze[i].daten, 2) == kEigeneMappe && eigene_ < 0)
                eigene_ = nummer;
            ++nummer;
        }
        if (saetze[i].typ != kExternsheet || !bytes.isEmpty() || !mappe.biff8()) continue;
        bytes = saetze[i].daten;
        for (size_t k = i + 1; k < saetze.size() && saetze[k].typ == kContinue; ++k) bytes += saetze[k].daten;
    }
    for (qsizetype ab = 2; ab + kEintragsgroesse <= bytes.size(); ab += kEintragsgroesse)
        eintraege_.push_back({u16(bytes, ab), u16(bytes, ab + 2), u16(bytes, ab + 4)});
}

std::vector<Definition> definitionenLesen(const Mappe& mappe) {
    const Verweisliste liste(mappe);
    std::vector<Definition> definitionen;
    for (size_t i = 0; i < mappe.globale().size(); ++i) {
        if (mappe.globale()[i].typ != kName) continue;
        definitionen.push_back(definitionLesen(mappe, liste, mappe.globale()[i].daten));
        definitionen.back().satz = i;
    }
    return definitionen;
}

bool istVerwaist(const Mappe& mappe, const Definition& d) {
    if (d.formel.isEmpty() || u8(d.formel, 0) == 0x1C) return true;  // no formula, or an error
    if (d.bereich) return false;
    if (!mappe.biff8())
        return (verweiszeichen(d.formel) == kZelle3d || verweiszeichen(d.formel) == kBereich3d) &&
               d.formel.size() >= 15 && u16(d.formel, 11) == kWeg;
    const Verweisliste liste(mappe);
    return d.eintrag >= 0 && size_t(d.eintrag) < liste.eintraege().size() &&
           liste.istEigen(liste.eintraege()[size_t(d.eintrag)]) &&
           liste.eintraege()[size_t(d.eintrag)].erstes == kWeg;
}

}  // namespace excel
