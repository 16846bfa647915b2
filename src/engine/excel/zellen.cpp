// Cells.
#include "engine/excel/zellen.h"

#include <algorithm>
#include <cmath>

#include "engine/excel/bytes.h"
#include "engine/excel/ketten.h"

namespace excel {
namespace {

constexpr int kZellkopf = 6;
constexpr int kSpalten = 256;
constexpr int kFormelErgebnis = 6;
constexpr int kErgebnisArt = 0;
constexpr int kErgebnisWert = 2;

enum Ergebnis : quint8 { kErgText = 0, kErgWahrheit = 1, kErgFehler = 2 };

}  // namespace

double rkZahl(quint32 rk) {
    const double zahl =
        rk & 2 ? double(qint32(rk) >> 2) : std::bit_cast<double>(quint64(rk & ~quint32(3)) << 32);
    return rk & 1 ? zahl / 100 : zahl;
}

void Zellenleser::weiterAb(qsizetype ort) {
    folge_.weiterAb(ort);
    tiefe_ = 1;
    mehrfach_ = mehrfachAnzahl_ = 0;
}

bool Zellenleser::naechste(Zelle& zelle) {
    for (;;) {
        if (mehrfach_ < mehrfachAnzahl_) {
            if (ausMulrk(zelle)) return true;
            continue;
        }
        if (!folge_.naechster(satz_)) return false;
        if (satz_.typ == kBof) ++tiefe_;
        if (satz_.typ == kEof && --tiefe_ <= 0) return false;
        if (tiefe_ == 1 && ausSatz(zelle)) return true;
    }
}

bool Zellenleser::kopfLesen(Zelle& zelle, int laenge) const {
    const QByteArrayView d = satz_.daten;
    if (d.size() < laenge) return false;
    zelle.zeile = u16(d, 0);
    zelle.spalte = u16(d, 2);
    zelle.xf = u16(d, 4);
    return zelle.spalte < kSpalten;
}

bool Zellenleser::ausSatz(Zelle& zelle) {
    const QByteArrayView d = satz_.daten;
    switch (satz_.typ) {
        case kLabelsst:
            zelle.art = Zelle::Art::Verweis;
            if (!kopfLesen(zelle, kZellkopf + 4)) return false;
            zelle.verweis = u32(d, kZellkopf);
            return true;
        case kNumber:
            zelle.art = Zelle::Art::Zahl;
            if (!kopfLesen(zelle, kZellkopf + 8)) return false;
            zelle.zahl = f64(d, kZellkopf);
            return true;
        case kRk:
            zelle.art = Zelle::Art::Zahl;
            if (!kopfLesen(zelle, kZellkopf + 4)) return false;
            zelle.zahl = rkZahl(u32(d, kZellkopf));
            return true;
        case kMulrk:
            mehrfach_ = 0;
            mehrfachAnzahl_ = std::max(0, int(d.size() - kZellkopf) / 6);
            return mehrfachAnzahl_ > 0 && ausMulrk(zelle);
        case kLabel:
        case kRstring:
            zelle.art = Zelle::Art::Text;
            textsatz_ = satz_;
            texteinzug_ = kZellkopf;
            return kopfLesen(zelle, kZellkopf + 2);
        case kBoolerr:
            if (!kopfLesen(zelle, kZellkopf + 2)) return false;
            zelle.art = u8(d, kZellkopf + 1) ? Zelle::Art::Fehler : Zelle::Art::Wahrheit;
            zelle.zahl = u8(d, kZellkopf);
            return true;
        case kFormula:
        case kFormulaBiff3:
        case kFormulaBiff4:
            return kopfLesen(zelle, kZellkopf + 8) && ausFormel(zelle);
        default:
            return false;
    }
}

// `u16 row, u16 first column, (u16 XF, u32 RK)..., u16 last column`
bool Zellenleser::ausMulrk(Zelle& zelle) {
    const QByteArrayView d = satz_.daten;
    const int platz = 4 + 6 * mehrfach_;
    const int spalte = u16(d, 2) + mehrfach_++;
    if (spalte >= kSpalten) return false;
    zelle.art = Zelle::Art::Zahl;
    zelle.zeile = u16(d, 0);
    zelle.spalte = quint16(spalte);
    zelle.xf = u16(d, platz);
    zelle.zahl = rkZahl(u32(d, platz + 2));
    return true;
}

bool Zellenleser::ausFormel(Zelle& zelle) {
    const QByteArrayView ergebnis = satz_.daten.sliced(kFormelErgebnis, 8);
    if (u16(ergebnis, 6) != 0xFFFF) {
        zelle.art = Zelle::Art::Zahl;
        zelle.zahl = f64(ergebnis, 0);
        return std::isfinite(zelle.zahl);
    }
    zelle.zahl = u8(ergebnis, kErgebnisWert);
    switch (u8(ergebnis, kErgebnisArt)) {
        case kErgText:
            zelle.art = Zelle::Art::Text;
            texteinzug_ = 0;
            return formeltextSuchen();
        case kErgWahrheit:
            zelle.art = Zelle::Art::Wahrheit;
            return true;
        case kErgFehler:
            zelle.art = Zelle::Art::Fehler;
            return true;
        default:
            return false;
    }
}

// The STRING of a formula; shared formulas, arrays and data tables may stand between the two.
bool Zellenleser::formeltextSuchen() {
    Satzfolge voraus(strom_, satz_.ende());
    while (voraus.naechster(textsatz_)) {
        switch (textsatz_.typ) {
            case kString:
                return textsatz_.daten.size() >= 2;
            case kShrfmla:
            case 0x00BC:  // the number of SHRFMLA in older files
            case kArray:
            case kTable:
            case kContinue:
                continue;
            default:
                return false;
        }
    }
    return false;
}

int Zellenleser::textlaenge() const {
    return u16(textsatz_.daten, texteinzug_);
}

QString Zellenleser::text() const {
    const QByteArrayView d = textsatz_.daten.sliced(texteinzug_);
    if (!biff8_) {
        const qsizetype laenge = std::min<qsizetype>(u16(d, 0), d.size() - 2);
        return codeseite_->lesen(d.sliced(2, laenge));
    }
    std::vector<QByteArrayView> stuecke{d};
    Satzfolge voraus(strom_, textsatz_.ende());
    for (Satzsicht weiter; voraus.naechster(weiter) && weiter.typ == kContinue;)
        stuecke.push_back(weiter.daten);
    Kettenleser leser(std::move(stuecke));
    QString text;
    leser.lesen(&text);
    return text;
}

}  // namespace excel
