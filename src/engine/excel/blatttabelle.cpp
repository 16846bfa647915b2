// Sheets as tables.
#include "engine/excel/blatttabelle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "base/atempause.h"
#include "engine/excel/blattname.h"
#include "engine/excel/spalteneigenes.h"
#include "engine/excel/umfang.h"
#include "engine/excel/zahlenwerte.h"

namespace excel {
namespace {

constexpr int kProbezeilen = 8;
constexpr double kGroessteWaehrung = 922337203685477.0;

// In the order of preference at equal numbers.
enum Sorte { kZahl, kWaehrung, kDatum, kText, kWahrheit, kSorten };

class Spaltenprobe {
  public:
    void zaehlen(Sorte sorte, int format) {
        ++anzahl_[size_t(sorte)];
        ++formate_[size_t(sorte)][format];
    }
    Sorte sorte() const {
        const auto meiste = std::max_element(anzahl_.begin(), anzahl_.end());
        return *meiste == 0 ? kText : Sorte(meiste - anzahl_.begin());
    }
    // The format that most cells of the winning kind have; 0 (General) without any.
    int format() const {
        int bestes = 0, meiste = 0;
        for (const auto& [format, anzahl] : formate_[size_t(sorte())]) {
            if (anzahl <= meiste) continue;
            bestes = format;
            meiste = anzahl;
        }
        return bestes;
    }

  private:
    std::array<int, kSorten> anzahl_{};
    std::array<std::map<int, int>, kSorten> formate_;
};

// The text of a cell as the sheet shows it; empty for an error.
QString wieGezeigt(const Arbeitsmappe& mappe, const Zelle& z, const Zellenleser& leser) {
    switch (z.art) {
        case Zelle::Art::Verweis:
            return mappe.texte().text(z.verweis);
        case Zelle::Art::Text:
            return leser.text();
        case Zelle::Art::Wahrheit:
            return z.zahl != 0 ? QStringLiteral("WAHR") : QStringLiteral("FALSCH");
        case Zelle::Art::Zahl:
            return zahlWieGezeigt(z.zahl, mappe.formate().angabe(z.xf), mappe.datum1904());
        case Zelle::Art::Fehler:
            break;
    }
    return {};
}

Sorte zahlsorte(Formatart art) {
    switch (art) {
        case Formatart::Datum:
            return kDatum;
        case Formatart::Waehrung:
            return kWaehrung;
        case Formatart::Nullen:
            // Postal codes and the like: the zeros count.
            return kText;
        case Formatart::Zahl:
            break;
    }
    return kZahl;
}

void feldtypSetzen(engine::FeldDef& feld, Sorte sorte, bool lang) {
    static constexpr int kTypen[] = {dao::dbDouble, dao::dbCurrency, dao::dbDate, dao::dbText,
                                     dao::dbBoolean};
    static constexpr int kGroessen[] = {8, 8, 8, dao::kMaxTextGroesse, 1};
    feld.typ = kTypen[sorte];
    feld.groesse = kGroessen[sorte];
    feld.leerErlaubt = sorte == kText;
    if (sorte == kText && lang) {
        feld.typ = dao::dbMemo;
        feld.groesse = 0;
    }
}

Zellenleser leserFuer(const Arbeitsmappe& mappe, int blatt) {
    const Mappe& m = mappe.mappe();
    return Zellenleser(m.teilstrom(m.blaetter()[size_t(blatt)]), m.biff8(), m.codeseite());
}

class Planung {
  public:
    Planung(const Arbeitsmappe& mappe, const Tabellenort& ort) : mappe_(mappe) {
        plan_.blatt = ort.blatt;
        Umfang umfang = umfangVon(mappe.mappe(), mappe.texte(), ort.blatt, ort.bereich);
        lang_ = umfang.lang;
        plan_.geordnet = umfang.geordnet;
        plan_.bereich = ort.bereich;
        if (ort.bereich && umfang.bereich)
            plan_.bereich->zeile2 = umfang.bereich->zeile2;
        else if (ort.bereich)
            plan_.bereich->zeile2 = ort.bereich->zeile1;
        else
            plan_.bereich = umfang.bereich;
    }

    Tabellenplan planen() {
        if (plan_.bereich) {
            Bereich& b = *plan_.bereich;
            b.spalte2 = std::min(b.spalte2, b.spalte1 + dao::kMaxFelder - 1);
            plan_.zeilen = b.zeile2 - b.zeile1;
            koepfe_.resize(size_t(b.spalte2 - b.spalte1 + 1));
            proben_.resize(koepfe_.size());
            ansehen();
        } else {
            koepfe_.resize(1);
            proben_.resize(1);
        }
        felderBilden();
        return std::move(plan_);
    }

  private:
    void ansehen() {
        const Bereich& b = *plan_.bereich;
        Zellenleser leser = leserFuer(mappe_, plan_.blatt);
        for (Zelle z; leser.naechste(z);) {
            if (z.zeile > b.zeile1 + kProbezeilen && plan_.geordnet) break;
            if (z.zeile > b.zeile1 + kProbezeilen || z.zeile < b.zeile1 || z.spalte < b.spalte1 ||
                z.spalte > b.spalte2)
                continue;
            const size_t spalte = size_t(z.spalte - b.spalte1);
            if (z.zeile == b.zeile1)
                koepfe_[spalte] = wieGezeigt(mappe_, z, leser);
            else
                zaehlen(proben_[spalte], z, leser);
        }
    }

    void zaehlen(Spaltenprobe& probe, const Zelle& z, const Zellenleser& leser) const {
        const int format = mappe_.formate().nummer(z.xf);
        if (z.art == Zelle::Art::Zahl) probe.zaehlen(zahlsorte(mappe_.formate().angabe(z.xf).art), format);
        if (z.art == Zelle::Art::Wahrheit) probe.zaehlen(kWahrheit, format);
        const bool text = (z.art == Zelle::Art::Verweis && mappe_.texte().laenge(z.verweis) > 0) ||
                          (z.art == Zelle::Art::Text && leser.textlaenge() > 0);
        if (text) probe.zaehlen(kText, format);
    }

    void felderBilden() {
        const std::vector<QString> namen = feldnamen(koepfe_);
        for (size_t i = 0; i < namen.size(); ++i) {
            engine::FeldDef feld;
            feld.name = namen[i];
            const int spalte = int(i) + (plan_.bereich ? plan_.bereich->spalte1 : 0);
            feldtypSetzen(feld, proben_[i].sorte(), lang_.test(size_t(spalte)));
            const int format = proben_[i].format();
            Spalteneigenes eigenes{format, format == 0 ? QString() : mappe_.formate().text(format), {}};
            if (koepfe_[i] != feld.name) eigenes.kopf = koepfe_[i];
            if (eigenes != Spalteneigenes()) feld.formatEigenes = spalteneigenesSchreiben(eigenes);
            plan_.felder.push_back(std::move(feld));
        }
    }

    const Arbeitsmappe& mappe_;
    Tabellenplan plan_;
    std::bitset<256> lang_;
    std::vector<QString> koepfe_;
    std::vector<Spaltenprobe> proben_;
};

class Tabellenzeilen : public engine::Zeilenquelle {
  public:
    Tabellenzeilen(std::shared_ptr<const Arbeitsmappe> mappe, Tabellenplan plan, QString tabelle,
                   Lesebericht bericht)
        : mappe_(std::move(mappe)),
          plan_(std::move(plan)),
          tabelle_(std::move(tabelle)),
          bericht_(std::move(bericht)),
          unpassende_(plan_.felder.size(), 0),
          leser_(leserFuer(*mappe_, plan_.blatt)) {
        if (!plan_.bereich) return;
        zeile_ = plan_.bereich->zeile1;
        if (!plan_.geordnet) ordnen();
        weiter();
    }

    bool naechste(engine::Zeile& zeile) override {
        Atempause();
        if (!plan_.bereich || zeile_ >= plan_.bereich->zeile2) {
            berichten();
            return false;
        }
        ++zeile_;
        zeile.assign(plan_.felder.size(), Wert::null());
        while (da_ && zelle_.zeile <= zeile_) {
            if (zelle_.zeile == zeile_) eintragen(zeile);
            weiter();
        }
        return true;
    }

  private:
    struct Satzort {
        quint16 zeile;
        qsizetype ort;
    };

    // The places of the records by row: only where they do not stand so.
    void ordnen() {
        for (Zelle z; leser_.naechste(z);) {
            if (saetze_.empty() || saetze_.back().ort != leser_.satzort())
                saetze_.push_back({z.zeile, leser_.satzort()});
            Atempause();
        }
        std::stable_sort(saetze_.begin(), saetze_.end(),
                         [](const Satzort& a, const Satzort& b) { return a.zeile < b.zeile; });
    }

    void weiter() {
        if (plan_.geordnet) {
            da_ = leser_.naechste(zelle_);
            return;
        }
        // The record of the last cell may hold more of them.
        if (imSatz_ && leser_.naechste(zelle_) && leser_.satzort() == saetze_[naechster_ - 1].ort) {
            da_ = true;
            return;
        }
        imSatz_ = da_ = naechster_ < saetze_.size();
        if (!da_) return;
        leser_.weiterAb(saetze_[naechster_++].ort);
        da_ = leser_.naechste(zelle_);
    }

    void eintragen(engine::Zeile& zeile) {
        const int spalte = zelle_.spalte - plan_.bereich->spalte1;
        if (spalte < 0 || size_t(spalte) >= zeile.size()) return;
        Wert& ziel = zeile[size_t(spalte)];
        ziel = wert(plan_.felder[size_t(spalte)].typ);
        if (ziel.istNull() && zeigtEtwas()) ++unpassende_[size_t(spalte)];
    }

    bool zeigtEtwas() const {
        return zelle_.art != Zelle::Art::Fehler && !wieGezeigt(*mappe_, zelle_, leser_).isEmpty();
    }

    void berichten() {
        std::vector<QString> saetze;
        for (size_t i = 0; i < unpassende_.size(); ++i)
            if (const qint64 n = unpassende_[i])
                saetze.push_back(
                    QStringLiteral(
                        "Tabelle '%1', Feld '%2': %3 nicht zu den ersten Zeilen (%4) und %5 leer. Wandeln "
                        "Sie die Spalte in Excel in Text um, wenn Sie das brauchen.")
                        .arg(tabelle_, plan_.felder[i].name,
                             n == 1 ? QStringLiteral("1 Wert passt")
                                    : QStringLiteral("%1 Werte passen").arg(n),
                             inhaltVon(plan_.felder[i].typ),
                             n == 1 ? QStringLiteral("bleibt") : QStringLiteral("bleiben")));
        if (bericht_ && !saetze.empty()) std::exchange(bericht_, {})(saetze);
    }

    static QString inhaltVon(int typ) {
        switch (typ) {
            case dao::dbDate:
                return QStringLiteral("Datum");
            case dao::dbCurrency:
                return QStringLiteral("Währung");
            case dao::dbBoolean:
                return QStringLiteral("WAHR oder FALSCH");
            default:
                return QStringLiteral("Zahlen");
        }
    }

    Wert wert(int typ) const {
        const bool zahl = zelle_.art == Zelle::Art::Zahl;
        switch (typ) {
            case dao::dbDouble:
                return zahl ? Wert(zelle_.zahl) : Wert::null();
            case dao::dbCurrency:
                if (!zahl || std::abs(zelle_.zahl) > kGroessteWaehrung) return Wert::null();
                return Waehrung{std::llround(zelle_.zahl * 10000)};
            case dao::dbDate:
                if (zahl)
                    if (const auto datum = datumAus(zelle_.zahl, mappe_->datum1904())) return *datum;
                return Wert::null();
            case dao::dbBoolean:
                return zelle_.art == Zelle::Art::Wahrheit ? Wert(zelle_.zahl != 0) : Wert::null();
            default: {
                QString text = wieGezeigt(*mappe_, zelle_, leser_);
                return text.isEmpty() ? Wert::null() : Wert(std::move(text));
            }
        }
    }

    std::shared_ptr<const Arbeitsmappe> mappe_;
    Tabellenplan plan_;
    QString tabelle_;
    Lesebericht bericht_;
    std::vector<qint64> unpassende_;  // cells of each column that are Null for their kind
    Zellenleser leser_;
    std::vector<Satzort> saetze_;
    size_t naechster_ = 0;
    bool imSatz_ = false;
    Zelle zelle_;
    bool da_ = false;
    int zeile_ = 0;
};

}  // namespace

Tabellenplan tabellenplan(const Arbeitsmappe& mappe, const Tabellenort& ort) {
    return Planung(mappe, ort).planen();
}

std::unique_ptr<engine::Zeilenquelle> tabellenzeilen(std::shared_ptr<const Arbeitsmappe> mappe,
                                                     Tabellenplan plan, const QString& tabelle,
                                                     Lesebericht bericht) {
    return std::make_unique<Tabellenzeilen>(std::move(mappe), std::move(plan), tabelle, std::move(bericht));
}

}  // namespace excel
