// Plans a new table.
#include "engine/dbase/schreibplan.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/dbase/merkmal.h"
#include "engine/dbase/namen.h"

namespace dbase {
namespace {

constexpr int kMaxFelderDrei = 128;
constexpr int kMaxFelderVier = 255;
constexpr int kMaxSatzDrei = 4000;
constexpr int kMaxSatzVier = 32767;
constexpr quint8 kSprachbyte850 = 0x02;

[[noreturn]] void ablehnen(int nummer, const QString& text) {
    throw EngineFehler(nummer, text);
}

struct Feldbau {
    Schreibart schreibart;
    char art;
    int laenge = 0;
    int stellen = 0;
};

Feldbau textfeld(int laenge) {
    return {Schreibart::Text, 'C', laenge, 0};
}

Feldbau zahlfeld(int laenge, int stellen) {
    return {Schreibart::Zahl, 'N', laenge, stellen};
}

constexpr Feldbau kMemofeld{Schreibart::Memo, 'M', 10, 0};
constexpr Feldbau kDatumsfeld{Schreibart::Datum, 'D', 8, 0};
constexpr Feldbau kWahrheitsfeld{Schreibart::Wahrheit, 'L', 1, 0};
constexpr Feldbau kZahlGemessen{Schreibart::GemesseneZahl, 'N', 20, 5};

// A column that comes from a dBase table is written as it was, FoxPro's own kinds by what they mean.
Feldbau feldbauAusMerkmal(const Merkmal& m, int maxZahl) {
    switch (m.art) {
        case 'N':
        case 'F':
            return {Schreibart::Zahl, m.art, m.laenge, m.stellen};
        case 'L':
            return kWahrheitsfeld;
        case 'D':
            return m.feldtyp == dao::dbDate ? kDatumsfeld : textfeld(m.laenge);
        case 'I':
            return zahlfeld(11, 0);
        case 'Y':
            return zahlfeld(maxZahl, 4);
        case 'T':
            return {Schreibart::Zeitpunkt, 'D', 8, 0};
        case 'B':
            return kZahlGemessen;
        case 'M':
            return kMemofeld;
        default:
            return m.laenge <= kMaxTextbreite ? textfeld(m.laenge) : kMemofeld;
    }
}

Feldbau feldbauAusTyp(const engine::FeldDef& feld, int maxZahl) {
    switch (feld.typ) {
        case dao::dbBoolean:
            return kWahrheitsfeld;
        case dao::dbByte:
            return zahlfeld(3, 0);
        case dao::dbInteger:
            return zahlfeld(6, 0);
        case dao::dbLong:
            return zahlfeld(11, 0);
        case dao::dbCurrency:
            return zahlfeld(maxZahl, 4);
        case dao::dbBigInt:
        case dao::dbSingle:
        case dao::dbDouble:
        case dao::dbDecimal:
            return kZahlGemessen;
        case dao::dbDate:
        case dao::dbTime:
            return kDatumsfeld;
        case dao::dbMemo:
            return kMemofeld;
        case dao::dbGUID:
            return textfeld(38);
        case dao::dbText:
            if (feld.groesse > 0 && feld.groesse <= kMaxTextbreite) return textfeld(feld.groesse);
            return {Schreibart::GemessenerText, 'C', kMaxTextbreite, 0};
        default:
            ablehnen(
                kSystemgrenze,
                QStringLiteral("Das Feld '%1' enthält Bilder oder andere Objekte, die eine dBase-Tabelle "
                               "nicht aufnehmen kann. Entfernen Sie das Feld aus der Tabelle.")
                    .arg(feld.name));
    }
}

// The source's own account of a column, unless the column is no longer of that kind.
std::optional<Merkmal> merkmalVon(const engine::FeldDef& feld) {
    const std::optional<Merkmal> m = merkmalLesen(feld.formatEigenes);
    return m && m->feldtyp == feld.typ ? m : std::nullopt;
}

void hindernisPruefen(const engine::FeldDef& feld, const Merkmal& m) {
    switch (m.hindernis) {
        case Merkmal::Hindernis::Keines:
            return;
        case Merkmal::Hindernis::UnlesbareArt:
            ablehnen(kSystemgrenze,
                     QStringLiteral("Das Feld '%1' hat eine Art ('%2'), die nicht gelesen und "
                                    "deshalb nicht kopiert werden kann. Entfernen Sie das Feld mit "
                                    "dem Programm, aus dem die Tabelle stammt.")
                         .arg(feld.name, QString(QChar::fromLatin1(m.art))));
        case Merkmal::Hindernis::OhneMemodatei:
            ablehnen(
                kSystemgrenze,
                QStringLiteral("Die Memodatei zum Feld '%1' fehlt oder ist unbrauchbar; die Tabelle kann "
                               "deshalb nicht kopiert werden. Legen Sie die Memodatei neben die Tabelle und "
                               "öffnen Sie die Datenbank neu.")
                    .arg(feld.name));
        case Merkmal::Hindernis::Zeichensatz:
            ablehnen(kSystemgrenze,
                     QStringLiteral(
                         "Die Tabelle mit dem Feld '%1' ist in einem Zeichensatz (%2) geschrieben, der "
                         "nicht geschrieben werden kann. Speichern Sie die Tabelle mit dem Programm, aus "
                         "dem sie stammt, im Zeichensatz 850 oder 1252.")
                         .arg(feld.name, QString::number(m.seite.seite)));
    }
}

// The first column that comes from a dBase table says how the whole table is written.
void schriftBestimmen(Schreibplan& plan, const engine::TabellenDef& def) {
    plan.sprachbyte = kSprachbyte850;
    for (const engine::FeldDef& feld : def.felder) {
        const std::optional<Merkmal> m = merkmalLesen(feld.formatEigenes);
        if (!m) continue;
        plan.stufe = m->stufe;
        plan.zeichensatz = Zeichensatz(m->seite.seite);
        plan.sprachbyte = m->sprachbyte;
        plan.ausSchaetzung = m->seite.herkunft == Seitenwahl::Herkunft::Schaetzung;
        if (m->seite.herkunft != Seitenwahl::Herkunft::Cpg) return;
        plan.sprachbyte = sprachbyteFuerSeite(m->seite.seite);
        // ISO 8859-1 and -15 have no language byte.
        if (plan.sprachbyte == 0) plan.cpg = m->seite.seite == 28605 ? "ISO 8859-15" : "ISO-8859-1";
        return;
    }
}

bool alsNamePassend(const QString& name, const Zeichensatz& zeichensatz, QByteArray& roh) {
    qsizetype fehlend = 0;
    return name.size() <= kMaxFeldname && zeichensatz.anhaengen(name, roh, fehlend);
}

// Names that come along stay; new ones are made to fit and are different from all others.
void spaltenBenennen(Schreibplan& plan, const engine::TabellenDef& def) {
    std::vector<QString> vergeben;
    for (size_t i = 0; i < def.felder.size(); ++i) {
        QByteArray roh;
        if (!merkmalLesen(def.felder[i].formatEigenes) ||
            !alsNamePassend(def.felder[i].name, plan.zeichensatz, roh))
            continue;
        plan.spalten[i].rohname = roh;
        vergeben.push_back(def.felder[i].name);
    }
    for (Schreibspalte& spalte : plan.spalten) {
        if (!spalte.rohname.isEmpty()) continue;
        const QString neu = neuerFeldname(spalte.name, plan.zeichensatz, vergeben);
        alsNamePassend(neu, plan.zeichensatz, spalte.rohname);
        vergeben.push_back(neu);
        if (neu.compare(spalte.name, Qt::CaseInsensitive) != 0)
            plan.hinweise.push_back(
                QStringLiteral("Tabelle '%1': Das Feld '%2' heißt in der dBase-Datei '%3', da "
                               "ein Feldname dort höchstens %4 Buchstaben, Ziffern und "
                               "Unterstriche hat.")
                    .arg(plan.tabelle, spalte.name, neu, QString::number(kMaxFeldname)));
    }
}

}  // namespace

bool Schreibplan::hatMemo() const {
    return std::any_of(spalten.begin(), spalten.end(),
                       [](const Schreibspalte& s) { return s.schreibart == Schreibart::Memo; });
}

int Schreibplan::satzlaenge() const {
    int laenge = 1;
    for (const Schreibspalte& s : spalten) laenge += s.laenge;
    return laenge;
}

quint8 Schreibplan::version() const {
    if (!hatMemo()) return 0x03;
    return stufe == 3 ? 0x83 : 0x8B;
}

void feldPlanbar(const engine::FeldDef& feld) {
    if (const std::optional<Merkmal> m = merkmalVon(feld))
        hindernisPruefen(feld, *m);
    else
        feldbauAusTyp(feld, 20);
}

Zeichensatz zeichensatzFuer(const engine::TabellenDef& def) {
    Schreibplan plan;
    schriftBestimmen(plan, def);
    return plan.zeichensatz;
}

Schreibplan schreibplanErstellen(const engine::TabellenDef& def) {
    Schreibplan plan;
    plan.tabelle = def.name;
    schriftBestimmen(plan, def);
    const int hoechstens = plan.stufe == 3 ? kMaxFelderDrei : kMaxFelderVier;
    if (int(def.felder.size()) > hoechstens || def.felder.empty())
        ablehnen(
            kZuVieleFelder,
            QStringLiteral("Die Tabelle '%1' hat %2 Felder; eine dBase-Tabelle dieser Art nimmt 1 bis %3 "
                           "auf. Verringern Sie die Zahl der Felder.")
                .arg(def.name, QString::number(def.felder.size()), QString::number(hoechstens)));
    for (const engine::FeldDef& feld : def.felder) {
        feldPlanbar(feld);
        const std::optional<Merkmal> m = merkmalVon(feld);
        const Feldbau bau =
            m ? feldbauAusMerkmal(*m, plan.maxZahlbreite()) : feldbauAusTyp(feld, plan.maxZahlbreite());
        plan.spalten.push_back({feld.name, {}, bau.schreibart, bau.art, bau.laenge, bau.stellen, 0});
    }
    spaltenBenennen(plan, def);
    return plan;
}

void spaltenAnordnen(Schreibplan& plan) {
    int ab = 1;
    for (Schreibspalte& s : plan.spalten) {
        s.ab = ab;
        ab += s.laenge;
    }
    const int hoechstens = plan.stufe == 3 ? kMaxSatzDrei : kMaxSatzVier;
    if (ab > hoechstens)
        ablehnen(
            kSystemgrenze,
            QStringLiteral("Ein Datensatz der Tabelle '%1' wäre %2 Zeichen lang; eine dBase-Tabelle dieser "
                           "Art nimmt höchstens %3 auf. Entfernen oder verkürzen Sie Textfelder.")
                .arg(plan.tabelle, QString::number(ab), QString::number(hoechstens)));
}

void tabellePlanbar(const engine::TabellenDef& def) {
    Schreibplan plan = schreibplanErstellen(def);
    for (Schreibspalte& s : plan.spalten)
        if (s.schreibart == Schreibart::GemessenerText) s.laenge = kMemofeld.laenge;
    spaltenAnordnen(plan);
}

}  // namespace dbase
