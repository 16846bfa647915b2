// One table of the folder as it is read.
#include "engine/dbase/tabelle.h"

#include "base/fehler.h"
#include "engine/dbase/merkmal.h"
#include "engine/dbase/namen.h"

namespace dbase {
namespace {

constexpr qint64 kSchaetzSaetze = 5000;

Tabelle schaetzbar(const Tabelle& tabelle) {
    Tabelle kopie = tabelle;
    kopie.aufbau.saetze = std::min(kopie.aufbau.saetze, kSchaetzSaetze);
    return kopie;
}

// Looks at the texts of the first records.
int seiteSchaetzen(const Tabelle& tabelle, const Tabellenquelle& quelle) {
    Seitenschaetzer schaetzer;
    Tabellenleser leser(schaetzbar(tabelle), quelle, {});
    engine::Zeile zeile;
    while (leser.naechste(zeile))
        for (const Spalte& s : tabelle.aufbau.spalten) {
            if (s.form == Feldform::Text || s.form == Feldform::TextVariabel)
                schaetzer.feld(leser.satz().data() + s.ab, s.laenge);
            if (s.form != Feldform::Memo && s.form != Feldform::MemoBinaer) continue;
            const QByteArray memo = leser.memobytes(s);
            schaetzer.feld(memo.constData(), memo.size());
        }
    return schaetzer.seite();
}

Seitenwahl seiteBestimmen(const Tabelle& tabelle, const Tabellenquelle& quelle, const QByteArray& cpg) {
    const int ausCpg = seiteFuerCpg(cpg);
    // No language byte stands for UTF-8, so that the other sign counts.
    if (ausCpg == kSeiteUtf8) return {kSeiteUtf8, Seitenwahl::Herkunft::Cpg};
    if (const int seite = seiteFuerSprachbyte(tabelle.aufbau.sprachbyte))
        return {seite, Seitenwahl::Herkunft::Sprachbyte};
    if (ausCpg != 0) return {ausCpg, Seitenwahl::Herkunft::Cpg};
    return {seiteSchaetzen(tabelle, quelle), Seitenwahl::Herkunft::Schaetzung};
}

int feldtypVon(const Spalte& s) {
    switch (s.form) {
        case Feldform::Text:
        case Feldform::TextVariabel:
            return s.laenge <= kMaxTextbreite ? dao::dbText : dao::dbMemo;
        case Feldform::Zahl:
        case Feldform::Doppelt:
            return dao::dbDouble;
        case Feldform::Wahrheit:
            return dao::dbBoolean;
        case Feldform::Datum:
        case Feldform::Zeitpunkt:
            return dao::dbDate;
        case Feldform::Ganzzahl:
            return dao::dbLong;
        case Feldform::Waehrung:
            return dao::dbCurrency;
        default:
            return dao::dbMemo;
    }
}

int groesseVon(int feldtyp, const Spalte& s) {
    switch (feldtyp) {
        case dao::dbText:
            return s.laenge;
        case dao::dbBoolean:
            return 1;
        case dao::dbLong:
            return 4;
        case dao::dbMemo:
            return 0;
        default:
            return 8;
    }
}

bool istMemo(const Spalte& s) {
    return s.form == Feldform::Memo || s.form == Feldform::MemoBinaer;
}

Merkmal::Hindernis hindernisVon(const Spalte& s, const Tabelle& tabelle, bool memoDa) {
    if (s.form == Feldform::Unlesbar) return Merkmal::Hindernis::UnlesbareArt;
    if (istMemo(s) && !memoDa) return Merkmal::Hindernis::OhneMemodatei;
    if (!Zeichensatz(tabelle.seite.seite).schreibbar()) return Merkmal::Hindernis::Zeichensatz;
    return Merkmal::Hindernis::Keines;
}

engine::FeldDef feldVon(const Spalte& s, const Tabelle& tabelle, bool memoDa) {
    engine::FeldDef feld;
    feld.name = s.name;
    feld.typ = feldtypVon(s);
    feld.groesse = groesseVon(feld.typ, s);
    Merkmal merkmal;
    merkmal.art = s.art;
    merkmal.laenge = s.laenge;
    merkmal.stellen = s.stellen;
    merkmal.feldtyp = feld.typ;
    merkmal.sprachbyte = tabelle.aufbau.sprachbyte;
    merkmal.seite = tabelle.seite;
    merkmal.stufe = tabelle.aufbau.stufe();
    merkmal.hindernis = hindernisVon(s, tabelle, memoDa);
    feld.formatEigenes = merkmalSchreiben(merkmal);
    return feld;
}

void spaltenBenennen(Tabelle& tabelle) {
    std::vector<QString> namen;
    const Zeichensatz zeichensatz(tabelle.seite.seite);
    for (Spalte& s : tabelle.aufbau.spalten) {
        if (s.form == Feldform::Verborgen) continue;
        s.name = lesbarerFeldname(zeichensatz.text(s.rohname.constData(), s.rohname.size()), namen);
        namen.push_back(s.name);
    }
}

// What a user should know who works with this table.
void hinweiseSammeln(Tabelle& tabelle, bool memoDa) {
    const auto hinweis = [&](const QString& text) {
        tabelle.hinweise.push_back(QStringLiteral("Tabelle '%1': ").arg(tabelle.name) + text);
    };
    for (const QString& schaden : tabelle.aufbau.schaeden)
        hinweis(QStringLiteral("Die Datei ist beschädigt, %1. Was lesbar ist, wird angezeigt; die Datei "
                               "selbst wird nicht verändert.")
                    .arg(schaden));
    if (tabelle.aufbau.hatMemo() && !memoDa)
        hinweis(
            QStringLiteral("Die Memodatei fehlt oder ist unbrauchbar; alle Memofelder erscheinen leer. "
                           "Kopieren Sie die Memodatei in denselben Ordner und öffnen Sie die Datenbank "
                           "neu."));
    for (const Spalte& s : tabelle.aufbau.spalten)
        if (s.form == Feldform::Unlesbar)
            hinweis(QStringLiteral("Das Feld '%1' hat eine Art ('%2'), die nicht gelesen werden kann, und "
                                   "erscheint leer.")
                        .arg(s.name, s.art < ' ' ? QString(u'?') : QString(QChar::fromLatin1(s.art))));
    if (!Zeichensatz(tabelle.seite.seite).bekannt())
        hinweis(QStringLiteral("Der Zeichensatz ist unbekannt; Umlaute können falsch erscheinen."));
}

std::optional<Memoleser> memoOeffnen(const Aufbau& aufbau, const Tabellenquelle& quelle) {
    if (!quelle.memo) return std::nullopt;
    return Memoleser(quelle.memo, aufbau.memoart);
}

bool memoBrauchbar(const Aufbau& aufbau, const Tabellenquelle& quelle) {
    const std::optional<Memoleser> memo = memoOeffnen(aufbau, quelle);
    return memo && memo->brauchbar();
}

}  // namespace

Tabelle tabelleLesen(const QString& name, const Tabellenquelle& quelle, const QByteArray& cpg) {
    Tabelle tabelle;
    tabelle.name = name;
    tabelle.aufbau = kopfLesen(*quelle.daten);
    tabelle.seite = seiteBestimmen(tabelle, quelle, cpg);
    spaltenBenennen(tabelle);
    const bool memoDa = memoBrauchbar(tabelle.aufbau, quelle);
    hinweiseSammeln(tabelle, memoDa);
    tabelle.def.name = name;
    for (const Spalte& s : tabelle.aufbau.spalten)
        if (s.form != Feldform::Verborgen) tabelle.def.felder.push_back(feldVon(s, tabelle, memoDa));
    if (tabelle.def.felder.empty())
        throw EngineFehler(kDateiNichtLesbar, QStringLiteral("sie hat keine Felder"));
    return tabelle;
}

}  // namespace dbase
