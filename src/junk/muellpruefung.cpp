// The junk check of a record.
#include "junk/muellpruefung.h"

#include "base/text.h"
#include "data/steuerfelder.h"
#include "engine/typen.h"
#include "junk/muellregel.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

// Fields of these types are never examined.
bool ausgenommen(int typ) {
    return typ == dao::dbBoolean || typ == dao::dbCurrency || typ == dao::dbDate || typ == dao::dbTime;
}

QString textVon(dao::Recordset& satz, int feld) {
    QString text;
    FehlerUebergehen([&] { text = satz.Fields(feld).Value().alsText(); });
    return text;
}

void anmerkungAnhaengen(dao::Recordset& satz, const QString& anmerkung) {
    dao::RecordsetField spalte = satz.Fields(QString::fromUtf16(kTempAmk));
    spalte.setValue(spalte.Value().alsText() + anmerkung);
}

void alsMuellMarkieren(dao::Recordset& satz) {
    satz.Fields(QString::fromUtf16(kTempDss)).setValue(int(kStatusMuell));
    ++gMuellAnzahl;
    dao::RecordsetField spalte = satz.Fields(QString::fromUtf16(kTempAmk));
    spalte.setValue(Trim(spalte.Value().alsText()));
}

}  // namespace

void DatensatzEntmuellen(dao::Recordset& satz) {
    int feld = 0;
    bool befund = false;
    Schritte s([&] {
        return QStringLiteral("Fehler beim Entmüllen des Datensatzes '%1' im Feld '%2' mit dem Wert '%3'.")
            .arg(textVon(satz, 0), satz.Fields(feld).Name(), textVon(satz, feld));
    });
    s.ablauf(
        [&] {
            const Muelloptionen optionen = fenster().muelloptionen();
            for (; feld < gFeldAnzahl; ++feld) {
                if (ausgenommen(satz.Fields(feld).Type())) continue;
                QStringList anmerkungen;
                s.tu([&] {
                    anmerkungen = MuellAnmerkungen(gZuordnungenTabelle1[size_t(feld)],
                                                   satz.Fields(feld).Value(), optionen);
                });
                befund = befund || !anmerkungen.isEmpty();
                for (const QString& anmerkung : anmerkungen)
                    s.tu([&] { anmerkungAnhaengen(satz, anmerkung); });
            }
            feld = std::max(0, gFeldAnzahl - 1);
            if (befund) s.tu([&] { alsMuellMarkieren(satz); });
        },
        [] { gFehler = true; });
}
