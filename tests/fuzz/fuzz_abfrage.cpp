// Query texts of any kind: each is understood or refused with an EngineFehler, and what is understood runs.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/fehler.h"
#include "engine/dao/abfrage.h"
#include "engine/dao/bedingung.h"
#include "engine/store/speicher.h"
#include "engine/typen.h"
#include "gemeinsam/versuchen.h"

namespace {

std::vector<engine::FeldDef> felder() {
    std::vector<engine::FeldDef> liste(3);
    const std::pair<const char16_t*, int> angaben[] = {
        {u"A", dao::dbLong}, {u"B", dao::dbCurrency}, {u"C", dao::dbText}};
    for (size_t i = 0; i < liste.size(); ++i) {
        liste[i].name = QString::fromUtf16(angaben[i].first);
        liste[i].typ = angaben[i].second;
    }
    return liste;
}

void ausfuehren(const dao::Bedingung& bedingung) {
    static const std::vector<engine::FeldDef> alle = felder();
    static store::Speicher* speicher = [] {
        auto* neu = new store::Speicher;
        neu->tabelleAnlegen(
            1, {store::Spaltenart::Ganzzahl, store::Spaltenart::Waehrung, store::Spaltenart::Text});
        neu->zeileAnhaengen(1, {0, 1, 2}, {Wert(1), Wert(Waehrung{10000}), Wert(u"x")});
        return neu;
    }();
    speicher->auswaehlen({1, dao::speicherbedingung(bedingung, alle, {0, 1, 2}), {2}});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t laenge) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(daten), qsizetype(laenge));
    if (dao::istAuswahlabfrage(text))
        Versuchen([&] {
            const dao::Auswahlabfrage abfrage = dao::auswahlabfrageLesen(text);
            if (abfrage.bedingung) ausfuehren(*abfrage.bedingung);
        });
    Versuchen([&] { ausfuehren(dao::loeschabfrageLesen(text).bedingung); });
    Versuchen([&] { ausfuehren(dao::bedingungLesen(text)); });
    return 0;
}
