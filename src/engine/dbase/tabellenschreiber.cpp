// Writes a new table.
#include "engine/dbase/tabellenschreiber.h"

#include <QDate>
#include <QtEndian>
#include <cstring>
#include <memory>
#include <optional>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/dbase/blockschreiber.h"
#include "engine/dbase/memoschreiber.h"

namespace dbase {
namespace {

constexpr int kKopfLaenge = 32;
constexpr int kFeldLaenge = 32;
constexpr char kFeldende = 0x0D;
constexpr char kDateiende = 0x1A;

[[noreturn]] void unvollstaendig(const QString& tabelle) {
    throw EngineFehler(
        kBeschaedigt,
        QStringLiteral("Die Tabelle '%1' ist nach dem Schreiben nicht vollständig. Die Dateien des "
                       "Ordners wurden nicht geändert.")
            .arg(tabelle));
}

// Runs over bytes in the order in which they stand in the table; two words at a time, which do not wait for
// each other.
void pruefsummeNachfuehren(quint64& summe, const char* daten, qint64 anzahl) {
    constexpr quint64 kFaktor = 0x9E3779B97F4A7C15u;
    quint64 zweite = ~summe;
    qint64 i = 0;
    for (; i + 16 <= anzahl; i += 16) {
        quint64 worte[2];
        std::memcpy(worte, daten + i, sizeof worte);
        summe = (summe ^ worte[0]) * kFaktor;
        zweite = (zweite ^ worte[1]) * kFaktor;
        summe ^= summe >> 32;
        zweite ^= zweite >> 32;
    }
    for (; i < anzahl; ++i) summe = (summe ^ quint8(daten[i])) * kFaktor;
    summe = (summe ^ (zweite >> 7) ^ quint64(anzahl)) * kFaktor;
}

void feldSchreiben(QByteArray& kopf, const Schreibspalte& s) {
    QByteArray feld(kFeldLaenge, '\0');
    feld.replace(0, s.rohname.size(), s.rohname);
    feld[11] = s.art;
    feld[16] = char(s.laenge);
    feld[17] = char(s.art == 'N' || s.art == 'F' ? s.stellen : 0);
    kopf += feld;
}

void einmalAlle(const engine::TabelleAnlegen& neu, const std::function<void(const engine::Zeile&)>& tun) {
    const std::unique_ptr<engine::Zeilenquelle> quelle = neu.zeilen();
    for (engine::Zeile zeile; quelle->naechste(zeile);) {
        Atempause();
        tun(zeile);
    }
}

}  // namespace

Tabellenschreiber::Tabellenschreiber(const engine::TabelleAnlegen& neu)
    : neu_(neu), plan_(schreibplanErstellen(neu.def)), kodierer_(plan_) {
    einmalAlle(neu_, [&](const engine::Zeile& zeile) { kodierer_.pruefen(zeile); });
    kodierer_.festlegen();
}

QByteArray Tabellenschreiber::kopf() const {
    const QDate heute = QDate::currentDate();
    QByteArray kopf(kKopfLaenge, '\0');
    kopf[0] = char(plan_.version());
    kopf[1] = char(heute.year() - 1900);
    kopf[2] = char(heute.month());
    kopf[3] = char(heute.day());
    qToLittleEndian<quint32>(quint32(kodierer_.zeilen()), kopf.data() + 4);
    qToLittleEndian<quint16>(quint16(kKopfLaenge + kFeldLaenge * plan_.spalten.size() + 1), kopf.data() + 8);
    qToLittleEndian<quint16>(quint16(plan_.satzlaenge()), kopf.data() + 10);
    kopf[29] = char(plan_.sprachbyte);
    for (const Schreibspalte& s : plan_.spalten) feldSchreiben(kopf, s);
    return kopf + kFeldende;
}

void Tabellenschreiber::schreiben(const QString& datei, const QString& name, const QString& memo,
                                  const QString& memoname) {
    Blockschreiber ziel(datei, name);
    std::optional<Memoschreiber> memos;
    if (hatMemo()) memos.emplace(memo, memoname, plan_.tabelle.toLatin1(), plan_.stufe);
    ziel.anhaengen(kopf());
    QByteArray satz(plan_.satzlaenge(), ' ');
    qint64 zeilen = 0;
    pruefsumme_ = 0;
    const Zeilenkodierer::Memoablage ablage = [&](const QByteArray& text) {
        pruefsummeNachfuehren(pruefsumme_, text.constData(), text.size());
        return memos->ablegen(text);
    };
    einmalAlle(neu_, [&](const engine::Zeile& zeile) {
        if (zeile.size() != plan_.spalten.size()) unvollstaendig(plan_.tabelle);
        kodierer_.satz(zeile, satz.data(), ablage);
        pruefsummeNachfuehren(pruefsumme_, satz.constData(), satz.size());
        ziel.anhaengen(satz);
        ++zeilen;
    });
    if (zeilen != kodierer_.zeilen()) unvollstaendig(plan_.tabelle);
    ziel.anhaengen(&kDateiende, 1);
    ziel.abschliessen();
    engine::aufPlatteBringen(datei);
    if (!memos) return;
    memos->abschliessen();
    engine::aufPlatteBringen(memo);
}

Tabelle Tabellenschreiber::zurueckgelesen(const QString& datei, const QString& memo) const {
    Tabellenquelle quelle{std::make_shared<Dateiquelle>(datei), {}};
    if (hatMemo()) quelle.memo = std::make_shared<Dateiquelle>(memo);
    const Tabelle gelesen = tabelleLesen(plan_.tabelle, quelle, plan_.cpg);
    const std::vector<Spalte>& spalten = gelesen.aufbau.spalten;
    bool gleich = gelesen.hinweise.empty() && gelesen.seite.seite == plan_.zeichensatz.seite() &&
                  spalten.size() == plan_.spalten.size() && gelesen.aufbau.satzlaenge == plan_.satzlaenge();
    for (size_t i = 0; gleich && i < spalten.size(); ++i) {
        const Schreibspalte& s = plan_.spalten[i];
        gleich = spalten[i].rohname == s.rohname && spalten[i].art == s.art &&
                 spalten[i].laenge == s.laenge && spalten[i].ab == s.ab;
    }
    if (!gleich) unvollstaendig(plan_.tabelle);

    Tabellenleser leser(gelesen, quelle, {});
    quint64 summe = 0;
    qint64 zeilen = 0;
    while (leser.naechsterSatz()) {
        Atempause();
        for (const Spalte& s : spalten) {
            if (s.form != Feldform::Memo) continue;
            const QByteArray text = leser.memobytes(s);
            if (!text.isEmpty()) pruefsummeNachfuehren(summe, text.constData(), text.size());
        }
        pruefsummeNachfuehren(summe, leser.satz().data(), leser.satz().size());
        ++zeilen;
    }
    if (zeilen != kodierer_.zeilen() || summe != pruefsumme_) unvollstaendig(plan_.tabelle);
    return gelesen;
}

}  // namespace dbase
