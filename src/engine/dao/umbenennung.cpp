// Order of renames.
#include "engine/dao/umbenennung.h"

#include <algorithm>

#include "base/fehler.h"

namespace dao {
namespace {

constexpr int kMaxVersuche = 10000;

bool gleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool enthaelt(const std::vector<QString>& namen, const QString& name) {
    return std::any_of(namen.begin(), namen.end(), [&](const QString& n) { return gleich(n, name); });
}

// A table may take its own name in another case.
bool ausfuehrbar(const engine::TabelleUmbenennen& schritt, const std::vector<QString>& vorhandene) {
    return gleich(schritt.alt, schritt.neu) || !enthaelt(vorhandene, schritt.neu);
}

QString zwischenname(const std::vector<engine::TabelleUmbenennen>& offene,
                     const std::vector<QString>& vorhandene,
                     const std::function<bool(const QString&)>& erlaubt) {
    for (int i = 1; i < kMaxVersuche; ++i) {
        // Short enough for every format.
        const QString name = QStringLiteral("TEMP%1").arg(i);
        const bool gewollt =
            std::any_of(offene.begin(), offene.end(),
                        [&](const engine::TabelleUmbenennen& u) { return gleich(u.neu, name); });
        if (!gewollt && !enthaelt(vorhandene, name) && erlaubt(name)) return name;
    }
    throw EngineFehler(kUngueltigerName,
                       QStringLiteral("Die Tabellen können nicht in einem Schritt umbenannt werden. "
                                      "Benennen Sie sie nacheinander um."));
}

}  // namespace

std::vector<engine::TabelleUmbenennen> umbenennungenOrdnen(
    std::vector<engine::TabelleUmbenennen> offene, std::vector<QString> vorhandene,
    const std::function<bool(const QString&)>& erlaubt) {
    std::vector<engine::TabelleUmbenennen> geordnet;
    const auto ausfuehren = [&](const engine::TabelleUmbenennen& schritt) {
        geordnet.push_back(schritt);
        *std::find(vorhandene.begin(), vorhandene.end(), schritt.alt) = schritt.neu;
    };
    while (!offene.empty()) {
        const auto naechste = std::find_if(offene.begin(), offene.end(), [&](const auto& schritt) {
            return ausfuehrbar(schritt, vorhandene);
        });
        if (naechste != offene.end()) {
            ausfuehren(*naechste);
            offene.erase(naechste);
            continue;
        }
        const QString dazwischen = zwischenname(offene, vorhandene, erlaubt);
        ausfuehren({offene.front().alt, dazwischen});
        offene.front().alt = dazwischen;
    }
    return geordnet;
}

}  // namespace dao
