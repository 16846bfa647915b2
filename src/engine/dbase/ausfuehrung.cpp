// Carries out a plan on the files of the folder.
#include "engine/dbase/ausfuehrung.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/dbase/blockschreiber.h"
#include "engine/dbase/memoschreiber.h"

namespace dbase {
namespace {

constexpr qint64 kIndexVermerkAb = 28;
constexpr qint64 kMemonameAb = 8;

QString dateiname(const QString& pfad) {
    return QFileInfo(pfad).fileName();
}

// Writes bytes into the middle of a file of our own.
void einsetzen(const QString& pfad, qint64 ab, const QByteArray& bytes) {
    QFile datei(pfad);
    if (datei.open(QIODevice::ReadWrite) && datei.seek(ab) && datei.write(bytes) == bytes.size() &&
        datei.flush())
        return;
    engine::systemfehler(pfad, QStringLiteral("geschrieben"));
}

void inhalteVergleichen(const QString& a, const QString& b, qint64 ab, qint64 anzahl) {
    constexpr qint64 kBlock = 1 << 20;
    const Dateiquelle eins(a);
    const Dateiquelle zwei(b);
    bool gleich = eins.groesse() == zwei.groesse();
    for (qint64 stelle = 0; gleich && stelle < eins.groesse(); stelle += kBlock) {
        QByteArray links = eins.bytes(stelle, kBlock);
        QByteArray rechts = zwei.bytes(stelle, kBlock);
        if (stelle == 0) {
            links.replace(ab, anzahl, QByteArray());
            rechts.replace(ab, anzahl, QByteArray());
        }
        gleich = links == rechts;
        Atempause();
    }
    if (!gleich)
        throw EngineFehler(kBeschaedigt,
                           QStringLiteral("Die Kopie der Datei '%1' stimmt nicht mit ihr überein. Es "
                                          "wurde nichts geändert.")
                               .arg(dateiname(a)));
}

}  // namespace

Ausfuehrung::Ausfuehrung(const QString& ordner, const Vorhaben& vorhaben)
    : ordner_(ordner), vorhaben_(vorhaben) {
    altdateienSammeln();
    altdateienPruefen();
    for (const engine::TabelleAnlegen* neu : vorhaben_.neue) {
        schreiber_.push_back(std::make_unique<Tabellenschreiber>(*neu));
        for (const QString& hinweis : schreiber_.back()->hinweise()) hinweise_.push_back(hinweis);
        if (neu->def.indexe.empty()) continue;
        QStringList namen;
        for (const engine::IndexDef& index : neu->def.indexe) namen << index.name;
        hinweise_.push_back(
            QStringLiteral("Tabelle '%1': Die Indizes (%2) gibt es in der dBase-Tabelle nicht. Legen "
                           "Sie sie bei Bedarf in Ihrem dBase-Programm an.")
                .arg(neu->def.name, namen.join(QStringLiteral(", "))));
    }
}

void Ausfuehrung::altdateienSammeln() {
    for (const Tabelle* tabelle : vorhaben_.gehende) {
        alte_.push_back({tabelle->pfad, tabelle->stand});
        if (tabelle->memostand) alte_.push_back({tabelle->memopfad, *tabelle->memostand});
        for (const QString& name : ordner_.begleiter(tabelle->name)) {
            const QString pfad = ordner_.pfadVon(name);
            if (pfad != tabelle->memopfad) alte_.push_back({pfad, engine::dateistandLesen(pfad)});
        }
        begleiterNennen(*tabelle);
    }
}

void Ausfuehrung::altdateienPruefen() const {
    for (const Altdatei& alte : alte_) {
        engine::standVergleichen(alte.pfad, alte.stand);
        engine::schreibbarkeitPruefen(alte.pfad);
    }
}

void Ausfuehrung::begleiterNennen(const Tabelle& tabelle) {
    QStringList weg;
    for (const QString& name : ordner_.begleiter(tabelle.name))
        if (istIndexdatei(name)) weg << name;
    const bool zieht = std::any_of(vorhaben_.umzuege.begin(), vorhaben_.umzuege.end(),
                                   [&](const Vorhaben::Umzug& u) { return u.tabelle == &tabelle; });
    if (weg.isEmpty()) return;
    const QString text =
        zieht ? QStringLiteral(
                    "Die Indexdateien der Tabelle '%1' passen nicht zu ihrem neuen Namen und wurden gelöscht "
                    "(%2). Legen Sie die Indizes in Ihrem dBase-Programm neu an.")
              : QStringLiteral("Mit der Tabelle '%1' wurden ihre Indexdateien gelöscht (%2).");
    hinweise_.push_back(text.arg(tabelle.name, weg.join(QStringLiteral(", "))));
}

Ausfuehrung::Endungen Ausfuehrung::endungenFuer(const QString& vorbild) const {
    return {vorbild, endungWie(vorbild, QStringLiteral("dbt")), endungWie(vorbild, QStringLiteral("cpg"))};
}

// The path of a file that comes in. One that goes is replaced under its own spelling.
QString Ausfuehrung::zielFuer(const QString& name, const QString& endung) const {
    const QString datei = name + u'.' + endung;
    for (const Altdatei& alte : alte_) {
        const QString alter = dateiname(alte.pfad);
        if (stammVon(alter) == name && endungVon(alter).compare(endung, Qt::CaseInsensitive) == 0)
            return engine::zielVon(alte.pfad);
    }
    return ordner_.pfadVon(datei);
}

std::optional<engine::Dateistand> Ausfuehrung::standVonAlter(const QString& pfad) const {
    for (const Altdatei& alte : alte_)
        if (engine::zielVon(alte.pfad) == engine::zielVon(pfad)) return alte.stand;
    return std::nullopt;
}

void Ausfuehrung::vormerken(const QString& ziel, engine::Beiname neu) {
    schritte_.push_back({ziel, std::move(neu), standVonAlter(ziel)});
}

void Ausfuehrung::cpgVormerken(const QString& ziel, const QByteArray& inhalt) {
    engine::Beiname neu = engine::leereDateiDaneben(ziel);
    Blockschreiber schreiber(neu.pfad(), dateiname(ziel));
    schreiber.anhaengen(inhalt);
    schreiber.abschliessen();
    engine::aufPlatteBringen(neu.pfad());
    vormerken(ziel, std::move(neu));
}

Tabelle Ausfuehrung::umziehen(const Vorhaben::Umzug& umzug) {
    Tabelle neu = *umzug.tabelle;
    const Endungen endungen = endungenFuer(endungVon(neu.pfad));
    neu.name = neu.def.name = umzug.neu;
    neu.aufbau.indexVermerk = false;
    if (neu.memostand) {
        const QString ziel = zielFuer(umzug.neu, endungVon(neu.memopfad));
        engine::Beiname memo = engine::kopieDaneben(ziel, neu.memopfad);
        const QByteArray name = memoKopfname(umzug.neu.toLatin1());
        if (neu.aufbau.memoart == Memoart::DbtVier) einsetzen(memo.pfad(), kMemonameAb, name);
        inhalteVergleichen(neu.memopfad, memo.pfad(), kMemonameAb,
                           neu.aufbau.memoart == Memoart::DbtVier ? name.size() : 0);
        engine::aufPlatteBringen(memo.pfad());
        neu.memopfad = ziel;
        neu.memostand = engine::dateistandLesen(memo.pfad());
        vormerken(ziel, std::move(memo));
    }
    const QByteArray cpg = ordner_.inhalt(umzug.tabelle->name, QStringLiteral("cpg"));
    if (!cpg.isEmpty()) cpgVormerken(zielFuer(umzug.neu, endungen.cpg), cpg);

    const QString ziel = zielFuer(umzug.neu, endungen.daten);
    engine::Beiname daten = engine::kopieDaneben(ziel, umzug.tabelle->pfad);
    // Without its index file dBase does not open a table that says it has one.
    const char vermerk = Dateiquelle(daten.pfad()).bytes(kIndexVermerkAb, 1).at(0);
    einsetzen(daten.pfad(), kIndexVermerkAb, QByteArray(1, char(vermerk & ~1)));
    inhalteVergleichen(umzug.tabelle->pfad, daten.pfad(), kIndexVermerkAb, 1);
    engine::aufPlatteBringen(daten.pfad());
    neu.pfad = ziel;
    neu.stand = engine::dateistandLesen(daten.pfad());
    vormerken(ziel, std::move(daten));
    return neu;
}

Tabelle Ausfuehrung::anlegen(Tabellenschreiber& schreiber, const engine::TabelleAnlegen& neu) {
    const QString name = neu.def.name;
    const Endungen endungen = endungenFuer(ordner_.ueblicheEndung());
    const QString ziel = zielFuer(name, endungen.daten);
    const QString memoziel = zielFuer(name, endungen.dbt);
    const auto leereDatei = [&](const QString& pfad) {
        return engine::leereDateiDaneben(pfad, standVonAlter(pfad) ? pfad : QString());
    };
    engine::Beiname daten = leereDatei(ziel);
    engine::Beiname memo = schreiber.hatMemo() ? leereDatei(memoziel) : engine::Beiname();
    schreiber.schreiben(daten.pfad(), dateiname(ziel), memo.pfad(), dateiname(memoziel));
    Tabelle gelesen = schreiber.zurueckgelesen(daten.pfad(), memo.pfad());
    gelesen.pfad = ziel;
    gelesen.stand = engine::dateistandLesen(daten.pfad());
    gelesen.def.geaendert = QDateTime::fromMSecsSinceEpoch(gelesen.stand.geaendertNs / 1'000'000);
    if (schreiber.hatMemo()) {
        gelesen.memopfad = memoziel;
        gelesen.memostand = engine::dateistandLesen(memo.pfad());
        vormerken(memoziel, std::move(memo));
    }
    if (!schreiber.cpg().isEmpty()) cpgVormerken(zielFuer(name, endungen.cpg), schreiber.cpg());
    vormerken(ziel, std::move(daten));
    return gelesen;
}

// What no new file replaces goes last.
void Ausfuehrung::loeschungenVormerken() {
    for (const Altdatei& alte : alte_) {
        const QString echt = engine::zielVon(alte.pfad);
        const bool ersetzt = std::any_of(
            schritte_.begin(), schritte_.end(),
            [&](const engine::Gruppenschritt& s) { return s.ziel == alte.pfad || s.ziel == echt; });
        if (!ersetzt) schritte_.push_back({alte.pfad, engine::Beiname(), alte.stand});
    }
}

std::vector<Tabelle> Ausfuehrung::durchfuehren() {
    std::vector<Tabelle> tabellen;
    for (const Vorhaben::Umzug& umzug : vorhaben_.umzuege) tabellen.push_back(umziehen(umzug));
    for (size_t i = 0; i < schreiber_.size(); ++i)
        tabellen.push_back(anlegen(*schreiber_[i], *vorhaben_.neue[i]));
    loeschungenVormerken();
    engine::gruppeAustauschen(std::move(schritte_));
    return tabellen;
}

}  // namespace dbase
