// Reads a table's header.
#include "engine/dbase/kopf.h"

#include <QtEndian>
#include <algorithm>
#include <numeric>

#include "base/fehler.h"

namespace dbase {
namespace {

constexpr int kKopfLaenge = 32;
constexpr int kFeldLaenge = 32;
constexpr int kNamenLaenge = 11;
constexpr int kFoxproAnhang = 263;  // the path of a .dbc, behind the fields
constexpr char kFeldende = 0x0D;
constexpr int kProbeSaetze = 100;
constexpr int kVerborgenesFeld = 1;
constexpr int kDarfNullSein = 2;

struct Version {
    quint8 byte;
    Memoart memo;
};

constexpr Version kVersionen[] = {
    {0x03, Memoart::Keine},   {0x04, Memoart::Keine},   {0x05, Memoart::Keine},   {0x43, Memoart::Keine},
    {0x63, Memoart::Keine},   {0x83, Memoart::DbtDrei}, {0xFB, Memoart::DbtDrei}, {0x8B, Memoart::DbtVier},
    {0x8E, Memoart::DbtVier}, {0x7B, Memoart::DbtVier}, {0xCB, Memoart::DbtVier}, {0x30, Memoart::Fpt},
    {0x31, Memoart::Fpt},     {0x32, Memoart::Fpt},     {0xF5, Memoart::Fpt}};

[[noreturn]] void ablehnen(const QString& warum) {
    throw EngineFehler(kDateiNichtLesbar, warum);
}

quint8 byteAn(const QByteArray& bytes, qint64 ab) {
    return quint8(bytes[ab]);
}

template <typename T>
T zahlAn(const QByteArray& bytes, qint64 ab) {
    return qFromLittleEndian<T>(bytes.constData() + ab);
}

// dBase 7 has longer fields and another header; older programs wrote the same version byte.
bool istDbaseSieben(const QByteArray& kopf, quint16 kopflaenge) {
    const quint8 version = byteAn(kopf, 0);
    if (version == 0x8C) return true;
    const bool alterKopf = kopflaenge >= 33 && (kopflaenge - 33) % kFeldLaenge <= 1;
    return version == 0x04 && !alterKopf && kopflaenge >= 68 + 48 + 1;
}

Memoart memoartVon(const QByteArray& kopf, quint16 kopflaenge) {
    const quint8 version = byteAn(kopf, 0);
    if (version == 0x02) ablehnen(QStringLiteral("das Format (dBase II) ist zu alt"));
    if (istDbaseSieben(kopf, kopflaenge)) ablehnen(QStringLiteral("das Format (dBase 7) ist zu neu"));
    for (const Version& eintrag : kVersionen)
        if (eintrag.byte == version) return eintrag.memo;
    ablehnen(QStringLiteral("das Kennzeichen 0x%1 gehört zu keinem unterstützten dBase-Format")
                 .arg(version, 2, 16, QLatin1Char('0')));
}

QByteArray rohnameVon(const QByteArray& feld) {
    const QByteArray name = feld.left(kNamenLaenge);
    return name.left(name.indexOf('\0') < 0 ? name.size() : name.indexOf('\0'));
}

Spalte spalteVon(const QByteArray& feld, bool visualFoxpro) {
    Spalte spalte;
    spalte.rohname = rohnameVon(feld);
    spalte.art = feld[11];
    spalte.laenge = byteAn(feld, 16);
    spalte.stellen = byteAn(feld, 17);
    spalte.schalter = visualFoxpro ? byteAn(feld, 18) : 0;
    return spalte;
}

// The fields up to their end mark; `ende` is then its place.
std::vector<Spalte> spaltenLesen(const QByteArray& kopf, qint64 grenze, bool visualFoxpro, qint64& ende) {
    std::vector<Spalte> spalten;
    for (ende = kKopfLaenge; ende + kFeldLaenge <= grenze; ende += kFeldLaenge) {
        if (kopf[ende] == kFeldende || kopf[ende] == 0) break;
        spalten.push_back(spalteVon(kopf.mid(ende, kFeldLaenge), visualFoxpro));
    }
    return spalten;
}

Feldform formVon(const Spalte& s, const Aufbau& aufbau) {
    const bool vfp = aufbau.visualFoxpro();
    if (s.schalter & kVerborgenesFeld) return Feldform::Verborgen;
    if (s.laenge == 0) return Feldform::Unlesbar;
    switch (s.art) {
        case 'C':
            return Feldform::Text;
        case 'N':
        case 'F':
            return Feldform::Zahl;
        case 'L':
            return Feldform::Wahrheit;
        case 'D':
            return s.laenge == 8 ? Feldform::Datum : Feldform::Text;
        case 'M':
            return s.laenge == 4 ? Feldform::MemoBinaer : Feldform::Memo;
        case 'I':
            return vfp && s.laenge == 4 ? Feldform::Ganzzahl : Feldform::Unlesbar;
        case 'Y':
            return vfp && s.laenge == 8 ? Feldform::Waehrung : Feldform::Unlesbar;
        case 'T':
            return vfp && s.laenge == 8 ? Feldform::Zeitpunkt : Feldform::Unlesbar;
        case 'B':
            return aufbau.foxpro() && s.laenge == 8 ? Feldform::Doppelt : Feldform::Unlesbar;
        case 'V':
            return vfp ? Feldform::TextVariabel : Feldform::Unlesbar;
        case '0':
            return vfp ? Feldform::Verborgen : Feldform::Unlesbar;
        default:
            return Feldform::Unlesbar;
    }
}

int summe(const std::vector<Spalte>& spalten) {
    return std::accumulate(spalten.begin(), spalten.end(), 1,
                           [](int n, const Spalte& s) { return n + s.laenge; });
}

// FoxPro and Clipper keep the upper half of a long text's width in the decimals.
std::vector<Spalte> mitLangenTexten(std::vector<Spalte> spalten) {
    for (Spalte& s : spalten)
        if (s.art == 'C') s.laenge += 256 * s.stellen;
    return spalten;
}

// Whether the first records begin with a deletion mark when they are looked for like this.
bool saetzePassen(const Bytequelle& datei, qint64 anfang, qint64 laenge, qint64 anzahl) {
    if (laenge < 2 || anfang > datei.groesse()) return false;
    const qint64 proben = std::min<qint64>({anzahl, kProbeSaetze, (datei.groesse() - anfang) / laenge});
    for (qint64 i = 0; i < proben; ++i) {
        char marke = 0;
        datei.lesen(anfang + i * laenge, &marke, 1);
        if (marke != ' ' && marke != '*' && marke != 0) return false;
    }
    return true;
}

void satzlaengeBestimmen(Aufbau& aufbau, const Bytequelle& datei, int imKopf) {
    const auto passt = [&](int laenge) {
        return saetzePassen(datei, aufbau.satzanfang, laenge, aufbau.saetzeImKopf);
    };
    const int kurz = summe(aufbau.spalten);
    aufbau.satzlaenge = imKopf;
    if (imKopf == kurz) return;
    const std::vector<Spalte> lange = mitLangenTexten(aufbau.spalten);
    if (summe(lange) == imKopf) {
        aufbau.spalten = lange;
        return;
    }
    if (imKopf > kurz && passt(imKopf)) {
        const auto ohneBreite = [](const Spalte& s) { return s.laenge == 0; };
        auto& spalten = aufbau.spalten;
        if (std::count_if(spalten.begin(), spalten.end(), ohneBreite) == 1)
            std::find_if(spalten.begin(), spalten.end(), ohneBreite)->laenge = imKopf - kurz;
        return;
    }
    if (!passt(kurz)) ablehnen(QStringLiteral("die Satzlänge stimmt nicht"));
    aufbau.satzlaenge = kurz;
    aufbau.schaeden.push_back(QStringLiteral("ihre angegebene Satzlänge ist falsch"));
}

void satzanfangBestimmen(Aufbau& aufbau, const Bytequelle& datei, const QByteArray& kopf, int kopflaenge,
                         qint64 feldende) {
    aufbau.satzanfang = kopflaenge;
    if (kopflaenge >= feldende && kopflaenge <= datei.groesse()) return;
    const int laenge = summe(aufbau.spalten);
    for (const qint64 anfang : {feldende + 1, feldende + 1 + kFoxproAnhang}) {
        if (feldende >= kopf.size() || kopf[feldende] != kFeldende) break;
        if (!saetzePassen(datei, anfang, laenge, aufbau.saetzeImKopf)) continue;
        aufbau.satzanfang = anfang;
        aufbau.schaeden.push_back(QStringLiteral("ihre angegebene Kopflänge ist falsch"));
        return;
    }
    ablehnen(QStringLiteral("die Kopflänge stimmt nicht"));
}

void saetzeZaehlen(Aufbau& aufbau, const Bytequelle& datei) {
    const qint64 da = std::max<qint64>(0, datei.groesse() - aufbau.satzanfang) / aufbau.satzlaenge;
    aufbau.saetze = std::min<qint64>(aufbau.saetzeImKopf, da);
    if (aufbau.saetze == aufbau.saetzeImKopf) return;
    aufbau.schaeden.push_back(QStringLiteral("sie ist kürzer, als sie angibt (nur %1 von %2 Datensätzen)")
                                  .arg(aufbau.saetze)
                                  .arg(aufbau.saetzeImKopf));
}

void spaltenOrdnen(Aufbau& aufbau) {
    int ab = 1;
    int bit = 0;
    for (Spalte& s : aufbau.spalten) {
        s.ab = ab;
        ab += s.laenge;
        s.form = formVon(s, aufbau);
        if (!aufbau.visualFoxpro()) continue;
        if (s.art == 'V' || s.art == 'Q') s.laengenbit = bit++;
        if (s.schalter & kDarfNullSein) s.nullbit = bit++;
        if (s.art == '0') aufbau.nullbitsAb = s.ab;
    }
    // A bit that the flags have no room for says nothing.
    const auto flags = std::find_if(aufbau.spalten.begin(), aufbau.spalten.end(),
                                    [](const Spalte& s) { return s.art == '0'; });
    const int platz = aufbau.nullbitsAb >= 0 ? flags->laenge * 8 : 0;
    for (Spalte& s : aufbau.spalten) {
        if (s.nullbit >= platz) s.nullbit = -1;
        if (s.laengenbit >= platz) s.laengenbit = -1;
    }
}

}  // namespace

bool Aufbau::hatMemo() const {
    return std::any_of(spalten.begin(), spalten.end(), [](const Spalte& s) {
        return s.form == Feldform::Memo || s.form == Feldform::MemoBinaer;
    });
}

Aufbau kopfLesen(const Bytequelle& datei) {
    const QByteArray kopf = datei.bytes(0, 0x10000);
    if (kopf.size() <= kKopfLaenge) ablehnen(QStringLiteral("sie ist zu kurz"));
    const quint16 kopflaenge = zahlAn<quint16>(kopf, 8);
    Aufbau aufbau;
    aufbau.version = byteAn(kopf, 0);
    aufbau.memoart = memoartVon(kopf, kopflaenge);
    if (byteAn(kopf, 15) == 1 && !aufbau.foxpro()) ablehnen(QStringLiteral("sie ist verschlüsselt"));
    aufbau.saetzeImKopf = zahlAn<quint32>(kopf, 4);
    aufbau.indexVermerk = byteAn(kopf, 28) & 1;
    aufbau.sprachbyte = byteAn(kopf, 29);

    // A header length that cannot be true is no bound for the fields either.
    const bool grenzeGilt = kopflaenge >= kKopfLaenge + kFeldLaenge && kopflaenge <= datei.groesse();
    qint64 feldende = 0;
    aufbau.spalten =
        spaltenLesen(kopf, grenzeGilt ? kopflaenge : kopf.size(), aufbau.visualFoxpro(), feldende);
    if (aufbau.spalten.empty()) ablehnen(QStringLiteral("sie hat keine Felder"));
    satzanfangBestimmen(aufbau, datei, kopf, kopflaenge, feldende);
    satzlaengeBestimmen(aufbau, datei, zahlAn<quint16>(kopf, 10));
    spaltenOrdnen(aufbau);
    saetzeZaehlen(aufbau, datei);
    return aufbau;
}

}  // namespace dbase
