// Rows written to data pages.
#include "engine/jet/zeilenschreiber.h"

#include <algorithm>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/jet/seitenvergabe.h"
#include "engine/jet/wertbau.h"

namespace jet {

Zeilenschreiber::Zeilenschreiber(Seitendatei& datei, Seitenvergabe& vergabe, const Tabelle& tabelle)
    : datei_(datei),
      vergabe_(vergabe),
      tabelle_(tabelle),
      lange_(tabelle.spalten.size()),
      puffer_(tabelle.spalten.size()),
      felder_(tabelle.spalten.size()),
      inhalte_(tabelle.spalten.size()) {
    for (size_t i = 0; i < lange_.size(); ++i)
        if (tabelle.spalten[i].istLang()) lange_[i] = std::make_unique<Langwertbau>(datei, vergabe);
}

void Zeilenschreiber::inhalteBilden(const engine::Zeile& zeile) {
    Q_ASSERT(zeile.size() == tabelle_.spalten.size());
    for (size_t i = 0; i < zeile.size(); ++i) {
        inhalte_[i].reset();
        if (zeile[i].istLeerOderNull()) continue;
        const Spalte& spalte = tabelle_.spalten[i];
        if (spalte.typ == kTypBoolean && !wahrheitVon(spalte, zeile[i])) continue;
        puffer_[i].resize(0);
        wertAnhaengen(puffer_[i], datei_.format(), spalte, zeile[i]);
        inhalte_[i] = puffer_[i];
    }
}

// Short long values stand in the row as long as the row has room for them all.
int Zeilenschreiber::inlineGrenze() const {
    const qsizetype inhalte = variableBytes(tabelle_, inhalte_);
    for (const int grenze : {kLangInline, 0}) {
        qsizetype bytes = inhalte;
        for (size_t i = 0; i < inhalte_.size(); ++i)
            if (lange_[i] && inhalte_[i])
                bytes += Langwertbau::feldlaenge(inhalte_[i]->size(), grenze) - inhalte_[i]->size();
        if (zeilenlaenge(datei_.format(), tabelle_, bytes) <= datei_.format().laengsteZeile) return grenze;
    }
    zeileZuLang();
}

void Zeilenschreiber::zeileZuLang() const {
    throw EngineFehler(
        kSystemgrenze,
        u"Der %1. Datensatz der Tabelle '%2' ist zu lang: Das Dateiformat lässt höchstens %3 Bytes je "
        u"Datensatz "
        "zu. Kürzen Sie seine Texte oder verwenden Sie Felder vom Typ Memo."_qs.arg(
            QString::number(anzahl_ + 1), tabelle_.name, QString::number(datei_.format().laengsteZeile)));
}

// The values of the row with the fields of the long ones.
const Rohsichten& Zeilenschreiber::mitLangen() {
    const int grenze = inlineGrenze();
    werte_ = inhalte_;
    for (size_t i = 0; i < werte_.size(); ++i) {
        if (!lange_[i] || !werte_[i]) continue;
        felder_[i] = lange_[i]->feld(puffer_[i], grenze);
        werte_[i] = felder_[i];
    }
    return werte_;
}

void Zeilenschreiber::autowertMerken(const engine::Zeile& zeile) {
    for (size_t i = 0; i < zeile.size(); ++i) {
        const Spalte& spalte = tabelle_.spalten[i];
        if (spalte.typ != kTypLong || !(spalte.flags & kSpalteAutowert) || zeile[i].istLeerOderNull())
            continue;
        const double wert = zeile[i].alsZahl();
        if (wert > double(autowert_)) autowert_ = quint32(wert);
    }
}

Zeilenort Zeilenschreiber::schreiben(const engine::Zeile& zeile) {
    inhalteBilden(zeile);
    const QByteArray bytes = zeileBauen(datei_.format(), tabelle_, mitLangen());
    if (!bau_ || !bau_->passt(bytes.size())) {
        abschliessen();
        Atempause();
        besitz_.push_back(vergabe_.belegen());
        bau_ = Datenseitenbau(datei_.format(), tabelle_.seite());
    }
    const Zeilenort ort{besitz_.back(), quint8(bau_->anfuegen(bytes))};
    autowertMerken(zeile);
    ++anzahl_;
    return ort;
}

void Zeilenschreiber::abschliessen() {
    if (bau_) datei_.schreiben(besitz_.back(), bau_->bytes());
    for (const auto& lang : lange_)
        if (lang) lang->abschliessen();
}

std::vector<quint32> Zeilenschreiber::frei() const {
    if (!bau_ || bau_->frei() < kMindestplatz) return {};
    return {besitz_.back()};
}

}  // namespace jet
