// Reads a table out of memory as far as it goes: what the mutation tests and the fuzzer drive.
#pragma once

#include <QByteArray>
#include <memory>

#include "base/fehler.h"
#include "engine/dbase/tabelle.h"

namespace lauf {

inline constexpr int kHoechsteZeilen = 2000;

// Any bytes must end in rows or in an EngineFehler.
inline void tabelle(const QByteArray& daten, const QByteArray& memo) {
    try {
        dbase::Tabellenquelle quelle{std::make_shared<dbase::Speicherquelle>(daten), {}};
        if (!memo.isEmpty()) quelle.memo = std::make_shared<dbase::Speicherquelle>(memo);
        const dbase::Tabelle tabelle = dbase::tabelleLesen(QStringLiteral("T"), quelle, {});
        dbase::Tabellenleser leser(tabelle, quelle, [](const dbase::Befund&) {});
        engine::Zeile zeile;
        for (int i = 0; i < kHoechsteZeilen && leser.naechste(zeile); ++i) continue;
    } catch (const EngineFehler&) {
        return;
    }
}

}  // namespace lauf
