// Table definitions read: header, counters, columns, indexes, names, long value maps.
#include "engine/jet/tdef.h"

#include <algorithm>
#include <numeric>

#include "engine/jet/bytes.h"

namespace jet {
namespace {

constexpr QStringView kName = u"Tabellendefinition";
constexpr size_t kHoechsteSeiten = 64;
constexpr int kHoechsteSpalten = 255;
constexpr quint32 kHoechsteIndexe = 1000;
constexpr int kIndexSpalten = 10;
constexpr quint16 kUnbenutzt = 0xFFFF;
constexpr int kNaechsteSeite = 4;
constexpr int kFolgeKopf = 8;  // bytes in front of a further page's part

// The whole definition: the first page entire, the others without their first 8 bytes.
QByteArray verbinden(const Seitendatei& datei, quint32 seite, std::vector<quint32>& seiten) {
    QByteArray alles;
    while (seite != 0) {
        if (seiten.size() >= kHoechsteSeiten ||
            std::find(seiten.begin(), seiten.end(), seite) != seiten.end())
            beschaedigt(kName, seite, kNaechsteSeite);
        const QByteArray bytes = datei.seite(seite, kTdefseite, kName);
        alles.append(seiten.empty() ? bytes : bytes.mid(kFolgeKopf));
        seiten.push_back(seite);
        seite = Sicht(bytes, kName, seite).u32(kNaechsteSeite);
    }
    return alles;
}

// Goes through the records one behind the other.
class Leser {
  public:
    Leser(const Format& format, QByteArrayView bytes, quint32 seite)
        : f_(format), sicht_(bytes, kName, seite) {}

    void kopfLesen(Tabelle& t);
    void zaehlerLesen(Tabelle& t);
    void spaltenLesen(Tabelle& t);
    void echteLesen(Tabelle& t);
    void logischeLesen(Tabelle& t);
    void langeLesen(Tabelle& t);

  private:
    QString nameLesen();
    Spalte spalteLesen(const Sicht& s) const;
    void spaltePruefen(const Tabelle& t, const Spalte& s) const;
    Sicht satz(int laenge) {
        const Sicht s = sicht_.sicht(ort_, laenge);
        ort_ += laenge;
        return s;
    }

    const Format& f_;
    Sicht sicht_;
    qint64 ort_ = 0;
    int spalten_ = 0;
    quint32 logische_ = 0;
    quint32 echte_ = 0;
};

void Leser::kopfLesen(Tabelle& t) {
    const Sicht k = satz(f_.tdefKopf);
    if (k.u32(f_.tdefLaenge) > sicht_.groesse()) k.kaputt(f_.tdefLaenge);
    t.rohKopf = k.bytes().toByteArray();
    t.zeilen = k.u32(f_.tdefZeilen);
    t.autowert = k.u32(f_.tdefAutowert);
    t.art = k.u8(f_.tdefArt);
    t.maxSpalten = k.u16(f_.tdefMaxSpalten);
    t.variable = k.u16(f_.tdefVariable);
    t.besitz = zeilenortVon(k.u32(f_.tdefBesitz));
    t.frei = zeilenortVon(k.u32(f_.tdefFrei));
    spalten_ = k.u16(f_.tdefSpalten);
    logische_ = k.u32(f_.tdefLogische);
    echte_ = k.u32(f_.tdefEchte);
    if (spalten_ > kHoechsteSpalten) k.kaputt(f_.tdefSpalten);
    if (logische_ > kHoechsteIndexe) k.kaputt(f_.tdefLogische);
    if (echte_ > kHoechsteIndexe) k.kaputt(f_.tdefEchte);
}

void Leser::zaehlerLesen(Tabelle& t) {
    for (quint32 i = 0; i < echte_; ++i) {
        const Sicht s = satz(f_.zaehler);
        EchterIndex& index = t.echte.emplace_back();
        index.rohZaehler = s.bytes().toByteArray();
        index.verschiedene = s.u32(f_.zaehlerVerschiedene);
    }
}

QString Leser::nameLesen() {
    const int laenge = f_.nameLaenge == 1 ? sicht_.u8(ort_) : sicht_.u16(ort_);
    if (f_.jet4 && laenge % 2 != 0) sicht_.kaputt(ort_);
    ort_ += f_.nameLaenge;
    return namenLesen(f_, satz(laenge).bytes());
}

Spalte Leser::spalteLesen(const Sicht& s) const {
    Spalte spalte;
    spalte.roh = s.bytes().toByteArray();
    spalte.typ = s.u8(0);
    spalte.nummer = s.u16(f_.spalteNummer);
    spalte.variabel = s.u16(f_.spalteVariabel);
    spalte.ordinal = s.u16(f_.spalteOrdinal);
    spalte.flags = s.u8(f_.spalteFlags);
    spalte.flags2 = f_.spalteFlags2 < 0 ? quint8(0) : s.u8(f_.spalteFlags2);
    spalte.fest = s.u16(f_.spalteFest);
    spalte.laenge = s.u16(f_.spalteLaenge);
    if (spalte.typ == kTypDezimal) {
        spalte.genauigkeit = s.u8(f_.spalteGenauigkeit);
        spalte.skala = s.u8(f_.spalteGenauigkeit + 1);
    } else {
        spalte.sortierung = s.u16(f_.spalteSortierung);
        spalte.sortVersion = f_.spalteSortVersion < 0 ? quint8(0) : s.u8(f_.spalteSortVersion);
    }
    return spalte;
}

void Leser::spaltePruefen(const Tabelle& t, const Spalte& s) const {
    const bool doppelt = t.spalteMitNummer(s.nummer) != nullptr;
    const bool festFalsch = s.istFest() && s.typ != kTypBoolean && s.fest + s.laenge > f_.seite;
    const bool variabelFalsch = !s.istFest() && s.typ != kTypBoolean && s.variabel >= t.variable;
    if (doppelt || festFalsch || variabelFalsch || s.nummer >= t.maxSpalten) sicht_.kaputt(ort_);
}

void Leser::spaltenLesen(Tabelle& t) {
    for (int i = 0; i < spalten_; ++i) {
        Spalte spalte = spalteLesen(satz(f_.spalte));
        spaltePruefen(t, spalte);
        t.spalten.push_back(std::move(spalte));
    }
    for (Spalte& spalte : t.spalten) spalte.name = nameLesen();
}

void Leser::echteLesen(Tabelle& t) {
    for (EchterIndex& index : t.echte) {
        const Sicht s = satz(f_.echter);
        index.roh = s.bytes().toByteArray();
        for (int i = 0; i < kIndexSpalten; ++i) {
            const quint16 nummer = s.u16(f_.echterSpalten + 3 * i);
            if (nummer == kUnbenutzt) continue;
            index.spalten.push_back({nummer, s.u8(f_.echterSpalten + 3 * i + 2) != 1});
        }
        index.karte = zeilenortVon(s.u32(f_.echterKarte));
        index.wurzel = s.u32(f_.echterWurzel);
        index.flags = s.u8(f_.echterFlags);
    }
}

void Leser::logischeLesen(Tabelle& t) {
    for (quint32 i = 0; i < logische_; ++i) {
        const Sicht s = satz(f_.logischer);
        const int n = f_.logischerNummer;
        LogischerIndex& index = t.logische.emplace_back();
        index.roh = s.bytes().toByteArray();
        index.nummer = s.u32(n);
        index.echter = s.u32(n + 4);
        index.beziehung = s.u8(n + 8);
        index.andererIndex = s.i32(n + 9);
        index.andereTabelle = s.u32(n + 13);
        index.kaskadeAendern = s.u8(n + 17);
        index.kaskadeLoeschen = s.u8(n + 18);
        index.art = s.u8(n + 19);
        if (index.echter >= echte_) s.kaputt(n + 4);
    }
    for (LogischerIndex& index : t.logische) index.name = nameLesen();
}

void Leser::langeLesen(Tabelle& t) {
    for (quint16 nummer = sicht_.u16(ort_); nummer != kUnbenutzt; nummer = sicht_.u16(ort_)) {
        const Sicht s = satz(10);
        if (t.lange.size() >= kHoechsteSpalten) s.kaputt(0);
        t.lange.push_back({nummer, zeilenortVon(s.u32(2)), zeilenortVon(s.u32(6))});
    }
}

}  // namespace

Tabelle tdefLesen(const Seitendatei& datei, quint32 seite) {
    Tabelle tabelle;
    const QByteArray bytes = verbinden(datei, seite, tabelle.seiten);
    Leser leser(datei.format(), bytes, seite);
    leser.kopfLesen(tabelle);
    leser.zaehlerLesen(tabelle);
    leser.spaltenLesen(tabelle);
    leser.echteLesen(tabelle);
    leser.logischeLesen(tabelle);
    leser.langeLesen(tabelle);
    return tabelle;
}

const Spalte* Tabelle::spalteMitNummer(quint16 nummer) const {
    for (const Spalte& s : spalten)
        if (s.nummer == nummer) return &s;
    return nullptr;
}

int Tabelle::spalteMitName(QStringView name_) const {
    for (size_t i = 0; i < spalten.size(); ++i)
        if (name_.compare(spalten[i].name, Qt::CaseInsensitive) == 0) return int(i);
    return -1;
}

std::vector<int> Tabelle::feldfolge() const {
    std::vector<int> folge(spalten.size());
    std::iota(folge.begin(), folge.end(), 0);
    std::stable_sort(folge.begin(), folge.end(),
                     [&](int a, int b) { return spalten[size_t(a)].ordinal < spalten[size_t(b)].ordinal; });
    return folge;
}

const Langwertkarten* Tabelle::langeMitNummer(quint16 nummer) const {
    for (const Langwertkarten& l : lange)
        if (l.nummer == nummer) return &l;
    return nullptr;
}

}  // namespace jet
