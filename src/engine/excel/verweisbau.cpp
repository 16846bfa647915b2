// Changing references in the globals.
#include "engine/excel/verweisbau.h"

#include <algorithm>

#include "engine/excel/bytes.h"
#include "engine/excel/ketten.h"
#include "engine/excel/satzfolge.h"
#include "engine/excel/tabellenorte.h"

namespace excel {
namespace {

constexpr quint16 kEigeneMappe = 0x0401;
constexpr size_t kEintraegeJeSatz = 1370;
constexpr quint16 kVerborgen = 0x0001;
constexpr char kGegangen[] = "_gone_1";
constexpr int kNameLaenge = 3, kNameFormel = 4, kNameBlatt = 8;  // places in NAME
constexpr int kNamecmtKopf = 16;                                 // of 0894: header, two lengths
enum Fensterort { kFensterAktiv = 10, kFensterErstes = 12, kFensterGewaehlt = 14, kFensterGroesse = 18 };
constexpr quint16 kBlattGewaehlt = 0x0200;
constexpr quint16 kBlattGezeigt = 0x0400;

// Behind the SUPBOOKs with what belongs to them, or where the first one would stand.
size_t hinterMappen(const Mappe& mappe) {
    size_t ort = mappe.hinterLetztem(kCountry, mappe.blaetter().back().satz + 1);
    for (const quint16 typ : {quint16(kSupbook), quint16(kExternname), quint16(kXct), quint16(kCrn)})
        ort = std::max(ort, mappe.hinterLetztem(typ, 0));
    return ort;
}

void listeSchreiben(Mappe& mappe, const Verweisliste& liste) {
    QByteArray bytes;
    anhaengen<quint16>(bytes, quint16(liste.eintraege().size()));
    std::vector<QByteArray> stuecke;
    for (size_t i = 0; i < liste.eintraege().size(); ++i) {
        if (i > 0 && i % kEintraegeJeSatz == 0) stuecke.push_back(std::exchange(bytes, {}));
        const Verweisliste::Eintrag& e = liste.eintraege()[i];
        anhaengen<quint16>(bytes, e.mappe);
        anhaengen<quint16>(bytes, e.erstes);
        anhaengen<quint16>(bytes, e.letztes);
    }
    stuecke.push_back(bytes);
    size_t ort = mappe.suchen(kExternsheet);
    if (ort >= mappe.globale().size()) {
        ort = hinterMappen(mappe);
        mappe.einfuegen(ort, {kExternsheet, {}});
    }
    while (ort + 1 < mappe.globale().size() && mappe.globale()[ort + 1].typ == kContinue)
        mappe.entfernen(ort + 1);
    mappe.daten(ort) = stuecke.front();
    for (size_t i = 1; i < stuecke.size(); ++i) mappe.einfuegen(ort + i, {kContinue, stuecke[i]});
}

// The SUPBOOK of the workbook itself; -1 without one.
int eigeneMappe(const Mappe& mappe) {
    for (size_t i = 0; i < mappe.globale().size(); ++i)
        if (mappe.globale()[i].typ == kSupbook && mappe.globale()[i].daten.size() == 4 &&
            u16(mappe.globale()[i].daten, 2) == kEigeneMappe)
            return int(i);
    return -1;
}

void blattzahlSetzen(Mappe& mappe) {
    const int eigene = eigeneMappe(mappe);
    if (eigene >= 0) setzen<quint16>(mappe.daten(size_t(eigene)), 0, quint16(mappe.blaetter().size()));
}

int blattVerweisen8(Mappe& mappe, int blatt, int vorhanden) {
    if (const size_t tabid = mappe.suchen(kTabid); tabid < mappe.globale().size()) {
        QByteArray& daten = mappe.daten(tabid);
        quint16 groesste = 0;
        for (qsizetype i = 0; i + 2 <= daten.size(); i += 2) groesste = std::max(groesste, u16(daten, i));
        anhaengen<quint16>(daten, quint16(groesste + 1));
    }
    if (eigeneMappe(mappe) < 0) {
        QByteArray daten;
        anhaengen<quint16>(daten, 0);
        anhaengen<quint16>(daten, kEigeneMappe);
        mappe.einfuegen(hinterMappen(mappe), {kSupbook, daten});
    }
    blattzahlSetzen(mappe);
    Verweisliste liste(mappe);
    const Verweisliste::Eintrag eintrag{quint16(liste.eigeneMappe()), quint16(blatt), quint16(blatt)};
    if (vorhanden < 0) {
        vorhanden = int(liste.eintraege().size());
        liste.eintraege().push_back(eintrag);
    } else {
        liste.eintraege()[size_t(vorhanden)] = eintrag;
    }
    listeSchreiben(mappe, liste);
    return vorhanden;
}

// Where names and references begin in a workbook that has none yet: they stand in front of its window
// settings.
size_t vorFenster(const Mappe& mappe) {
    size_t ort = mappe.globale().size();
    for (const quint16 typ :
         {quint16(kName), quint16(kWindowprotect), quint16(kProtect), quint16(kPassword), quint16(kWindow1)})
        ort = std::min(ort, mappe.suchen(typ));
    return ort < mappe.globale().size() ? ort : mappe.blaetter().front().satz;
}

int blattVerweisen5(Mappe& mappe, int blatt) {
    const QByteArray name = namenBytes(mappe, mappe.blaetter()[size_t(blatt)].name);
    size_t zahl = mappe.suchen(kExterncount);
    if (zahl >= mappe.globale().size()) {
        zahl = vorFenster(mappe);
        mappe.einfuegen(zahl, {kExterncount, QByteArray(2, '\0')});
    }
    QByteArray daten(1, char(name.size()));
    daten.append('\x03').append(name);
    const auto& saetze = mappe.globale();
    const int bisher =
        int(std::count_if(saetze.begin(), saetze.end(), [](const Satz& s) { return s.typ == kExternsheet; }));
    mappe.einfuegen(mappe.hinterLetztem(kExternsheet, zahl + 1), {kExternsheet, daten});
    setzen<quint16>(mappe.daten(zahl), 0, quint16(bisher + 1));
    return bisher + 1;
}

QByteArray bereichsformel(const Mappe& mappe, const Bereich& b, int eintrag) {
    QByteArray f(1, '\x3B');
    anhaengen<quint16>(f, quint16(mappe.biff8() ? eintrag : -eintrag));
    if (!mappe.biff8()) {
        // As Excel fills the unused bytes.
        f += QByteArray::fromHex("0000000000000100");
        anhaengen<quint16>(f, quint16(b.blatt));
        anhaengen<quint16>(f, quint16(b.blatt));
    }
    anhaengen<quint16>(f, quint16(b.zeile1));
    anhaengen<quint16>(f, quint16(b.zeile2));
    if (mappe.biff8()) {
        anhaengen<quint16>(f, quint16(b.spalte1));
        anhaengen<quint16>(f, quint16(b.spalte2));
    } else {
        f.append(char(b.spalte1)).append(char(b.spalte2));
    }
    return f;
}

// A NAME from its fixed part (14 bytes, lengths are put right), its text, its formula and what stands behind.
QByteArray namenssatz(const Mappe& mappe, QByteArray kopf, const QString& text, const QByteArray& formel,
                      const QByteArray& rest) {
    const QByteArray bytes = namenBytes(mappe, text);
    setzen<quint8>(kopf, kNameLaenge, quint8(mappe.biff8() ? text.size() : bytes.size()));
    setzen<quint16>(kopf, kNameFormel, quint16(formel.size()));
    return kopf + bytes + formel + rest;
}

size_t hinterNamen(const Mappe& mappe) {
    size_t ort = mappe.hinterLetztem(kName, 0);
    if (ort == 0) return mappe.hinterLetztem(kExternsheet, hinterMappen(mappe));
    const auto gehoertDazu = [](quint16 typ) {
        return typ == 0x0893 || typ == kNamecmt || typ == 0x0898 || typ == kContinue;
    };
    while (ort < mappe.globale().size() && gehoertDazu(mappe.globale()[ort].typ)) ++ort;
    return ort;
}

// The comment of a name holds its text once more.
void kommentarUmbenennen(Mappe& mappe, size_t satz, const QString& text) {
    for (size_t i = satz + 1; i < mappe.globale().size() && mappe.globale()[i].typ != kName; ++i) {
        const QByteArray daten = mappe.globale()[i].daten;
        if (mappe.globale()[i].typ != kNamecmt || daten.size() <= kNamecmtKopf) continue;
        const qsizetype alt = 1 + qsizetype(u16(daten, 12)) * (u8(daten, kNamecmtKopf) & 1 ? 2 : 1);
        if (daten.size() < kNamecmtKopf + alt) return;
        QByteArray neu = daten.first(kNamecmtKopf) + zeichenBytes8(text) + daten.sliced(kNamecmtKopf + alt);
        setzen<quint16>(neu, 12, quint16(text.size()));
        mappe.daten(i) = neu;
        return;
    }
}

bool sichtbar(const Mappe& mappe, size_t blatt) {
    return blatt < mappe.blaetter().size() && mappe.blaetter()[blatt].sichtbarkeit == 0;
}

// The bits of a sheet's WINDOW2: reads them, or sets some.
quint16 fensterbits(Mappe& mappe, size_t blatt, quint16 dazu = 0) {
    Stueck& stueck = mappe.stuecke()[size_t(mappe.blaetter()[blatt].stueck)];
    Satzfolge folge(stueck.bytes);
    int tiefe = 0;
    for (Satzsicht satz; folge.naechster(satz);) {
        if (satz.typ == kBof) ++tiefe;
        if (satz.typ == kEof && --tiefe <= 0) break;
        if (tiefe != 1 || satz.typ != kWindow2 || satz.daten.size() < 2) continue;
        const quint16 bits = u16(satz.daten, 0) | dazu;
        if (bits != u16(satz.daten, 0)) setzen<quint16>(stueck.bytes, satz.ort + kSatzkopf, bits);
        return bits;
    }
    return 0;
}

}  // namespace

int blattVerweisen(Mappe& mappe, int blatt, int vorhanden) {
    return mappe.biff8() ? blattVerweisen8(mappe, blatt, vorhanden) : blattVerweisen5(mappe, blatt);
}

Blattpaar nachVerlust(Blattpaar paar, int weg) {
    if (paar.erstes >= kKeinBlatt || paar.letztes >= kKeinBlatt) return paar;
    if (paar.erstes == weg && paar.letztes == weg) return {kWeg, kWeg};
    // A range of sheets that begins with the lost one begins with the next.
    if (paar.erstes > weg) --paar.erstes;
    if (paar.letztes >= weg) --paar.letztes;
    return paar;
}

void blattVergessen(Mappe& mappe, int blatt) {
    blattzahlSetzen(mappe);
    if (const size_t tabid = mappe.suchen(kTabid); tabid < mappe.globale().size())
        if (mappe.globale()[tabid].daten.size() >= 2 * (blatt + 1)) mappe.daten(tabid).remove(2 * blatt, 2);
    Verweisliste liste(mappe);
    for (Verweisliste::Eintrag& e : liste.eintraege()) {
        if (!liste.istEigen(e)) continue;
        const Blattpaar neu = nachVerlust({e.erstes, e.letztes}, blatt);
        e.erstes = neu.erstes;
        e.letztes = neu.letztes;
    }
    if (!liste.eintraege().empty()) listeSchreiben(mappe, liste);
    for (const Definition& d : definitionenLesen(mappe)) {
        if (d.blatt == 0 || mappe.globale()[d.satz].daten.size() < kNamenskopf) continue;
        if (d.blatt != blatt + 1) {
            if (d.blatt > blatt + 1) setzen<quint16>(mappe.daten(d.satz), kNameBlatt, quint16(d.blatt - 1));
            continue;
        }
        QByteArray kopf(kNamenskopf, '\0');
        setzen<quint16>(kopf, 0, kVerborgen);
        mappe.daten(d.satz) =
            namenssatz(mappe, kopf, freierName(mappe, kGegangen), QByteArray::fromHex("1c17"), {});
    }
    for (size_t i = 0; i < mappe.globale().size(); ++i) {
        if (mappe.globale()[i].typ != kWindow1 || mappe.globale()[i].daten.size() < kFensterGroesse) continue;
        for (const int ort : {kFensterAktiv, kFensterErstes}) {
            const int nummer = u16(mappe.globale()[i].daten, ort);
            const bool letztes = nummer == blatt && size_t(blatt) >= mappe.blaetter().size();
            if (nummer > blatt || letztes)
                setzen<quint16>(mappe.daten(i), ort, quint16(std::max(0, nummer - 1)));
        }
    }
}

void namenEintragen(Mappe& mappe, const QString& text, const Bereich& bereich, int eintrag, int alt) {
    const QByteArray daten =
        namenssatz(mappe, QByteArray(kNamenskopf, '\0'), text, bereichsformel(mappe, bereich, eintrag), {});
    if (alt >= 0)
        mappe.daten(size_t(alt)) = daten;
    else
        mappe.einfuegen(hinterNamen(mappe), {kName, daten});
}

void namenUmbenennen(Mappe& mappe, size_t satz, const QString& text) {
    const QByteArray daten = mappe.globale()[satz].daten;
    const auto alle = definitionenLesen(mappe);
    const auto d =
        std::find_if(alle.begin(), alle.end(), [&](const Definition& x) { return x.satz == satz; });
    if (d == alle.end() || d->formelort == 0) beschaedigt();
    mappe.daten(satz) = namenssatz(mappe, daten.first(kNamenskopf), text, d->formel,
                                   daten.sliced(d->formelort + d->formel.size()));
    kommentarUmbenennen(mappe, satz, text);
}

void namenToeten(Mappe& mappe, const Definition& d) {
    const QByteArray daten = mappe.globale()[d.satz].daten;
    mappe.daten(d.satz) = namenssatz(mappe, daten.first(kNamenskopf), d.text, QByteArray::fromHex("1c17"),
                                     daten.sliced(d.formelort + d.formel.size()));
}

QString freierName(const Mappe& mappe, const QString& stamm) {
    const auto alle = definitionenLesen(mappe);
    const auto frei = [&](const QString& name) {
        return std::none_of(alle.begin(), alle.end(),
                            [&](const Definition& d) { return namenGleich(d.text, name); });
    };
    if (frei(stamm)) return stamm;
    for (int n = 1;; ++n)
        if (const QString name = stamm + QString::number(n); frei(name)) return name;
}

void fensterRichten(Mappe& mappe) {
    size_t erstes = 0;
    while (erstes < mappe.blaetter().size() && !sichtbar(mappe, erstes)) ++erstes;
    if (erstes >= mappe.blaetter().size()) return;
    quint16 gewaehlt = 0;
    for (size_t i = 0; i < mappe.globale().size(); ++i) {
        if (mappe.globale()[i].typ != kWindow1 || mappe.globale()[i].daten.size() < kFensterGroesse) continue;
        for (const int ort : {kFensterAktiv, kFensterErstes})
            if (!sichtbar(mappe, u16(mappe.globale()[i].daten, ort)))
                setzen<quint16>(mappe.daten(i), ort, quint16(erstes));
        const size_t aktiv = u16(mappe.globale()[i].daten, kFensterAktiv);
        if (!(fensterbits(mappe, aktiv) & kBlattGewaehlt))
            fensterbits(mappe, aktiv, kBlattGewaehlt | kBlattGezeigt);
    }
    for (size_t b = 0; b < mappe.blaetter().size(); ++b)
        gewaehlt += (fensterbits(mappe, b) & kBlattGewaehlt) != 0;
    for (size_t i = 0; i < mappe.globale().size(); ++i)
        if (mappe.globale()[i].typ == kWindow1 && mappe.globale()[i].daten.size() >= kFensterGroesse)
            setzen<quint16>(mappe.daten(i), kFensterGewaehlt, std::max<quint16>(1, gewaehlt));
}

}  // namespace excel
