// Conditions in the working store's language.
#include "engine/dao/bedingung.h"

#include <algorithm>

#include "base/fehler.h"

namespace dao {
namespace {

constexpr int kDatentypUnvertraeglich = 3464;  // data type mismatch in a condition

void vergleichbarkeitPruefen(const engine::FeldDef& feld) {
    const store::Spaltenart art = store::spaltenartVon(feld.typ);
    if (art == store::Spaltenart::Text || art == store::Spaltenart::Bytes)
        throw EngineFehler(kDatentypUnvertraeglich,
                           QStringLiteral("Das Feld '%1' kann nicht mit einer Zahl verglichen "
                                          "werden.")
                               .arg(feld.name));
}

store::Bedingung gleichung(const Bedingung& gleich, const std::vector<engine::FeldDef>& felder,
                           const std::vector<int>& spalten) {
    if (gleich.links.feld.isEmpty()) return {gleich.links.zahl == gleich.rechts.zahl ? "1" : "0", {}};
    const auto stelle = size_t(feldFuerAbfrage(felder, gleich.links.feld));
    vergleichbarkeitPruefen(felder[stelle]);
    return store::gleich(spalten[stelle], store::spaltenartVon(felder[stelle].typ), gleich.rechts.zahl);
}

}  // namespace

int feldFuerAbfrage(const std::vector<engine::FeldDef>& felder, const QString& name) {
    const auto fund = std::find_if(felder.begin(), felder.end(), [&](const engine::FeldDef& feld) {
        return feld.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (fund == felder.end())
        throw EngineFehler(kParameterFehlt,
                           QStringLiteral("Das Feld '%1' gibt es in der Tabelle nicht.").arg(name));
    return int(fund - felder.begin());
}

store::Bedingung speicherbedingung(const Bedingung& bedingung, const std::vector<engine::FeldDef>& felder,
                                   const std::vector<int>& spalten) {
    if (bedingung.art == Bedingung::Art::Gleich) return gleichung(bedingung, felder, spalten);
    const QByteArray verbinder = bedingung.art == Bedingung::Art::Und ? " AND " : " OR ";
    store::Bedingung ganze;
    for (const Bedingung& teil : bedingung.teile) {
        store::Bedingung eine = speicherbedingung(teil, felder, spalten);
        ganze.text += (ganze.text.isEmpty() ? QByteArray() : verbinder) + "(" + eine.text + ")";
        ganze.spalten.merge(eine.spalten);
    }
    if (bedingung.art == Bedingung::Art::Nicht) ganze.text.prepend("NOT ");
    return ganze;
}

}  // namespace dao
