// Changing the SST.
#include "engine/excel/textbau.h"

#include <algorithm>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/excel/bytes.h"
#include "engine/excel/zellen.h"

namespace excel {
namespace {

constexpr int kSstKopf = 8;
constexpr int kTextkopf = 3;  // length and flag byte
constexpr int kEimerkopf = 2;
constexpr int kEimer = 8;
constexpr quint32 kWenigstensJeEimer = 8;
constexpr quint32 kHoechstensEimer = 128;

// Behind the last record that may stand in front of an SST.
size_t sstPlatz(const Mappe& mappe) {
    size_t ort = mappe.blaetter().back().satz + 1;
    for (const quint16 typ :
         {quint16(kCountry), quint16(kSupbook), quint16(kExternname), quint16(kXct), quint16(kCrn),
          quint16(kExternsheet), quint16(kName), quint16(0x0893), quint16(kNamecmt), quint16(0x0898),
          quint16(kRecalcid), quint16(0x0866), quint16(kMsodrawinggroup)})
        ort = std::max(ort, mappe.hinterLetztem(typ, 0));
    return ort;
}

size_t fortsetzungen(const Mappe& mappe, size_t sst) {
    size_t n = 0;
    while (sst + 1 + n < mappe.globale().size() && mappe.globale()[sst + 1 + n].typ == kContinue) ++n;
    return n;
}

// The largest number that a cell uses, + 1.
quint32 benutzt(const Mappe& mappe) {
    quint32 grenze = 0;
    for (const Stueck& stueck : mappe.stuecke()) {
        Satzfolge folge(stueck.bytes);
        for (Satzsicht satz; folge.naechster(satz);)
            if (satz.typ == kLabelsst && satz.daten.size() >= 10)
                grenze = std::max(grenze, u32(satz.daten, 6) + 1);
    }
    return grenze;
}

}  // namespace

Textbau::Textbau(const Mappe& mappe) : tafel_(mappe), maxSatz_(mappe.maxSatz()), anzahl_(tafel_.anzahl()) {
    nummern_.reserve(qsizetype(anzahl_));
    // The first of equal texts is the one to use again; those with runs have a look of their own.
    for (quint32 i = 0; i < anzahl_; ++i) {
        if (!tafel_.schlicht(i)) continue;
        const QString text = tafel_.text(i);
        if (!nummern_.contains(text)) nummern_.insert(text, i);
        Atempause();
    }
    const size_t sst = mappe.suchen(kSst);
    if (sst >= mappe.globale().size()) {
        stuecke_.emplace_back(kSstKopf, '\0');
        return;
    }
    fest_ = fortsetzungen(mappe, sst);
    stuecke_.push_back(mappe.globale()[sst + fest_].daten);
    // An SST without even its counts is no place to add to.
    if (fest_ == 0 && stuecke_[0].size() < kSstKopf) stuecke_[0] = QByteArray(kSstKopf, '\0');
}

std::optional<quint32> Textbau::nummer(const QString& text) {
    const auto fund = nummern_.constFind(text);
    if (fund != nummern_.constEnd()) return *fund;
    if (!tafel_.heil()) return {};
    anfuegen(text);
    nummern_.insert(text, anzahl_);
    return anzahl_++;
}

void Textbau::neuesStueck() {
    stuecke_.emplace_back();
    stuecke_.back().reserve(maxSatz_);
}

void Textbau::anfuegen(const QString& text) {
    neu_ = true;
    const bool breit = std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; });
    const int breite = breit ? 2 : 1;
    // A header without its first character confuses a reader.
    if (stuecke_.back().size() + kTextkopf + breite > maxSatz_) neuesStueck();
    excel::anhaengen<quint16>(stuecke_.back(), quint16(text.size()));
    stuecke_.back().append(char(breit));
    for (qsizetype i = 0; i < text.size();) {
        QByteArray& ziel = stuecke_.back();
        const qsizetype passend = std::min((maxSatz_ - ziel.size()) / breite, text.size() - i);
        if (breit)
            ziel.append(reinterpret_cast<const char*>(text.utf16() + i), passend * 2);
        else
            for (qsizetype k = 0; k < passend; ++k) ziel.append(char(text[i + k].unicode()));
        i += passend;
        if (i == text.size()) break;
        neuesStueck();
        stuecke_.back().append(char(breit));
    }
}

void Textbau::eintragen(Mappe& mappe) {
    if (!neu_) return;
    size_t sst = mappe.suchen(kSst);
    if (sst >= mappe.globale().size()) {
        sst = sstPlatz(mappe);
        mappe.einfuegen(sst, {kSst, {}});
    }
    mappe.daten(sst + fest_) = stuecke_.front();
    for (size_t i = 1; i < stuecke_.size(); ++i) mappe.einfuegen(sst + fest_ + i, {kContinue, stuecke_[i]});
    setzen<quint32>(mappe.daten(sst), 4, anzahl_);
    stuecke_.clear();
}

void texteKuerzen(Mappe& mappe) {
    const size_t sst = mappe.suchen(kSst);
    if (sst >= mappe.globale().size() || mappe.globale()[sst].daten.size() < kSstKopf) return;
    const Texttafel tafel(mappe);
    const quint32 bleiben = benutzt(mappe);
    if (bleiben >= tafel.anzahl() || !tafel.heil()) return;
    const auto [stueck, ort] = tafel.ort(bleiben);
    for (size_t n = fortsetzungen(mappe, sst); n > size_t(stueck); --n) mappe.entfernen(sst + n);
    // A CONTINUE that would be empty goes, too.
    if (stueck > 0 && ort == 0)
        mappe.entfernen(sst + size_t(stueck));
    else
        mappe.daten(sst + size_t(stueck)).truncate(ort);
    setzen<quint32>(mappe.daten(sst), 4, bleiben);
}

void textverweiseZaehlen(Mappe& mappe) {
    const size_t sst = mappe.suchen(kSst);
    if (sst >= mappe.globale().size() || mappe.globale()[sst].daten.size() < kSstKopf) return;
    quint32 anzahl = 0;
    for (const Stueck& stueck : mappe.stuecke()) {
        Satzfolge folge(stueck.bytes);
        for (Satzsicht satz; folge.naechster(satz);) anzahl += satz.typ == kLabelsst;
    }
    setzen<quint32>(mappe.daten(sst), 0, anzahl);
}

Textindex::Textindex(const Mappe& mappe)
    : sstOrt_(mappe.ortVon(std::min(mappe.suchen(kSst), mappe.globale().size()))),
      globalGroesse_(mappe.ortVon(mappe.globale().size())) {}

void Textindex::erneuern(Mappe& mappe, bool geaendert) const {
    const size_t index = mappe.suchen(kExtsst);
    const size_t sst = mappe.suchen(kSst);
    if (index >= mappe.globale().size() || sst >= mappe.globale().size()) return;
    if (!geaendert) {
        // Rubbish in it is left as it is.
        QByteArray daten = mappe.globale()[index].daten;
        const qsizetype versatz = mappe.ortVon(sst) - sstOrt_;
        for (qsizetype ab = kEimerkopf; ab + kEimer <= daten.size(); ab += kEimer) {
            const qsizetype ort = u32(daten, ab);
            if (ort < sstOrt_ || ort >= globalGroesse_) return;
            setzen<quint32>(daten, ab, quint32(ort + versatz));
        }
        mappe.daten(index) = daten;
        return;
    }
    const Texttafel tafel(mappe);
    const quint32 jeEimer = std::max(kWenigstensJeEimer, tafel.anzahl() / kHoechstensEimer + 1);
    QByteArray daten;
    anhaengen<quint16>(daten, quint16(jeEimer));
    for (quint32 i = 0; i < tafel.anzahl(); i += jeEimer) {
        const auto [stueck, ort] = tafel.ort(i);
        anhaengen<quint32>(daten, quint32(mappe.ortVon(sst + size_t(stueck)) + kSatzkopf + ort));
        anhaengen<quint16>(daten, quint16(kSatzkopf + ort));
        anhaengen<quint16>(daten, 0);
    }
    // An index over several records is read as one.
    for (size_t n = fortsetzungen(mappe, index); n > 0; --n) mappe.entfernen(index + n);
    mappe.daten(index) = daten;
}

}  // namespace excel
