// Turns rows into records.
#include "engine/dbase/zeilenkodierer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/fehler.h"
#include "engine/dbase/memoschreiber.h"
#include "engine/dbase/namen.h"
#include "engine/dbase/werte.h"

namespace dbase {
namespace {

constexpr qint64 kMaxDatei = 2147483647;
constexpr int kMaxStellen = 15;
constexpr int kUeblicheBreite = 20;  // N(20,5): what the old engines made of a number
constexpr int kUeblicheStellen = 5;
constexpr int kZeitpunktBreite = 19;
constexpr qint64 kSchaetzSaetze = 5000;
constexpr qsizetype kGezeigteZeichen = 40;
constexpr char16_t kEndmarke = 0x1A;
constexpr char kWeicherUmbruch[] = "\x8D\x0A";

bool nichts(const Wert& wert) {
    return wert.istLeerOderNull() || (wert.istText() && wert.text().isEmpty());
}

// The text of a value without a copy, where it is one; what is made stays in `halter`.
QStringView textVon(const Wert& wert, QString& halter) {
    if (wert.istText()) return wert.text();
    halter = wert.alsText();
    return halter;
}

void zifferPaar(int zahl, char* ziel) {
    ziel[0] = char('0' + zahl / 10 % 10);
    ziel[1] = char('0' + zahl % 10);
}

// False for a day outside the years 1 to 9999.
bool datumSchreiben(DatumZeit zeit, char* ziel) {
    if (!(std::abs(zeit.tage) < 4e6)) return false;
    const Kalendertag tag = kalendertagVon(qint64(std::trunc(zeit.tage)));
    if (tag.jahr < 1 || tag.jahr > 9999) return false;
    zifferPaar(tag.jahr / 100, ziel);
    zifferPaar(tag.jahr % 100, ziel + 2);
    zifferPaar(tag.monat, ziel + 4);
    zifferPaar(tag.tag, ziel + 6);
    return true;
}

bool mitUhrzeit(const Wert& wert) {
    return wert.art() == Wert::Art::DatumZeit && wert.datumZeit().tage != std::trunc(wert.datumZeit().tage);
}

DatumZeit datumVon(const Wert& wert) {
    return wert.art() == Wert::Art::DatumZeit ? wert.datumZeit() : DatumZeit{wert.alsZahl()};
}

// "2001-12-31 08:15:00"
bool zeitpunktSchreiben(DatumZeit zeit, char* ziel) {
    char tag[8];
    if (!datumSchreiben(zeit, tag)) return false;
    const double bruchteil = std::abs(zeit.tage - std::trunc(zeit.tage));
    const int sekunden = std::min(int(std::lround(bruchteil * 86400)), 86399);
    std::memcpy(ziel, "0000-00-00 00:00:00", kZeitpunktBreite);
    std::memcpy(ziel, tag, 4);
    std::memcpy(ziel + 5, tag + 4, 2);
    std::memcpy(ziel + 8, tag + 6, 2);
    zifferPaar(sekunden / 3600, ziel + 11);
    zifferPaar(sekunden / 60 % 60, ziel + 14);
    zifferPaar(sekunden % 60, ziel + 17);
    return true;
}

// The place of a value without one.
void leerSchreiben(const Schreibspalte& spalte, char* ziel) {
    std::memset(ziel, spalte.schreibart == Schreibart::Wahrheit ? '?' : ' ', size_t(spalte.laenge));
}

}  // namespace

Zeilenkodierer::Zeilenkodierer(Schreibplan& plan) : plan_(plan), messungen_(plan.spalten.size()) {
    int breite = kMaxTextbreite;
    for (const Schreibspalte& s : plan.spalten) breite = std::max(breite, s.laenge);
    probe_.resize(breite);
}

void Zeilenkodierer::ablehnen(int nummer, const Schreibspalte& spalte, const QString& was) const {
    throw EngineFehler(nummer, QStringLiteral("Tabelle '%1', Feld '%2', Datensatz %3: %4")
                                   .arg(plan_.tabelle, spalte.name, QString::number(zeilen_), was));
}

void Zeilenkodierer::pruefen(const engine::Zeile& zeile) {
    ++zeilen_;
    if (zeile.size() != plan_.spalten.size())
        throw EngineFehler(kBeschaedigt,
                           QStringLiteral("Die Tabelle '%1' ist beschädigt: Eine Zeile hat nicht "
                                          "so viele Werte wie die Tabelle Felder.")
                               .arg(plan_.tabelle));
    for (size_t i = 0; i < zeile.size(); ++i) wertPruefen(plan_.spalten[i], messungen_[i], zeile[i]);
}

void Zeilenkodierer::wertPruefen(const Schreibspalte& spalte, Messung& messung, const Wert& wert) {
    if (nichts(wert)) return;
    switch (spalte.schreibart) {
        case Schreibart::Text:
        case Schreibart::GemessenerText:
        case Schreibart::Memo:
            return textPruefen(spalte, messung, wert);
        case Schreibart::GemesseneZahl:
            return zahlMessen(spalte, messung, wert);
        case Schreibart::Datum:
        case Schreibart::Zeitpunkt:
            messung.uhrzeiten += mitUhrzeit(wert);
            break;
        case Schreibart::Zahl:
        case Schreibart::Wahrheit:
            break;
    }
    wertSchreiben(spalte, messung, wert, probe_.data());
}

void Zeilenkodierer::textPruefen(const Schreibspalte& spalte, Messung& messung, const Wert& wert) {
    QString halter;
    const QStringView text = textVon(wert, halter);
    if (spalte.schreibart == Schreibart::Text && text.size() > spalte.laenge)
        ablehnen(
            kFeldZuKlein, spalte,
            QStringLiteral("Der Text '%1' hat %2 Zeichen, das Feld nimmt nur %3 auf. Kürzen Sie den Text.")
                .arg(text.left(kGezeigteZeichen).toString(), QString::number(text.size()),
                     QString::number(spalte.laenge)));
    messung.zuLang = messung.zuLang || text.size() > kMaxTextbreite;
    if (text.size() > probe_.size()) probe_.resize(text.size());
    const qsizetype fehlend = plan_.zeichensatz.schreiben(text, probe_.data());
    if (fehlend >= 0)
        ablehnen(kUmwandlung, spalte,
                 QStringLiteral(
                     "Das Zeichen '%1' (U+%2) gibt es im Zeichensatz %3 der Tabelle nicht. Ersetzen Sie "
                     "es durch ein anderes.")
                     .arg(QString(text[fehlend]),
                          QStringLiteral("%1").arg(uint(text[fehlend].unicode()), 4, 16, QLatin1Char('0')),
                          QString::number(plan_.zeichensatz.seite())));
    if (plan_.ausSchaetzung && zeilen_ <= kSchaetzSaetze) schaetzer_.feld(probe_.constData(), text.size());
    if (spalte.schreibart == Schreibart::Text) return;
    if (QByteArrayView(probe_).first(text.size()).contains(QByteArrayView(kWeicherUmbruch)))
        ablehnen(kUmwandlung, spalte,
                 QStringLiteral("Ein 'ì' oder Steuerzeichen steht unmittelbar vor einem Zeilenende, was "
                                "dBase für einen Umbruch des Bildschirms hält. Setzen Sie ein Leerzeichen "
                                "dazwischen."));
    messung.endezeichen += text.contains(QChar(kEndmarke));
    messung.memobloecke += memobloecke(text.size(), plan_.stufe);
}

void Zeilenkodierer::zahlMessen(const Schreibspalte& spalte, Messung& messung, const Wert& wert) {
    const std::optional<Dezimaltext> d = dezimaltextVon(wert, kMaxStellen);
    if (!d)
        ablehnen(kUmwandlung, spalte, QStringLiteral("Der Wert '%1' ist keine Zahl.").arg(wert.alsText()));
    const int vorkomma = std::max(1, d->vorkomma()) + (d->negativ ? 1 : 0);
    if (vorkomma > messung.vorkomma) {
        messung.vorkomma = vorkomma;
        messung.zeileVorkomma = zeilen_;
    }
    if (d->nachkomma() > messung.nachkomma) {
        messung.nachkomma = d->nachkomma();
        messung.zeileNachkomma = zeilen_;
    }
}

void Zeilenkodierer::festlegen() {
    for (size_t i = 0; i < plan_.spalten.size(); ++i) {
        Schreibspalte& spalte = plan_.spalten[i];
        const Messung& messung = messungen_[i];
        if (spalte.schreibart == Schreibart::GemesseneZahl) {
            zahlFestlegen(spalte, messung);
        } else if (spalte.schreibart == Schreibart::GemessenerText) {
            spalte.schreibart = messung.zuLang ? Schreibart::Memo : Schreibart::Text;
            if (messung.zuLang) spalte.art = 'M';
            if (messung.zuLang) spalte.laenge = 10;
        } else if (spalte.schreibart == Schreibart::Zeitpunkt && messung.uhrzeiten > 0) {
            spalte.art = 'C';
            spalte.laenge = kZeitpunktBreite;
        }
        hinweiseSammeln(spalte, messung);
    }
    spaltenAnordnen(plan_);
    const qint64 groesse = 33 + 32 * qint64(plan_.spalten.size()) + zeilen_ * plan_.satzlaenge() + 1;
    qint64 memo = 1;
    for (size_t i = 0; i < plan_.spalten.size(); ++i)
        if (plan_.spalten[i].schreibart == Schreibart::Memo) memo += messungen_[i].memobloecke;
    if (groesse > kMaxDatei || memo * kMemoblock > kMaxDatei)
        throw EngineFehler(
            kSystemgrenze,
            QStringLiteral("Die Tabelle '%1' wäre mit ihren %2 Datensätzen größer als 2 GB; mehr "
                           "fasst eine dBase-Datei nicht. Teilen Sie die Tabelle.")
                .arg(plan_.tabelle, QString::number(zeilen_)));
    // Without any sign of its page the table must be taken for what it is by the letters alone.
    if (plan_.ausSchaetzung && schaetzer_.seite() != plan_.zeichensatz.seite())
        plan_.sprachbyte = sprachbyteFuerSeite(plan_.zeichensatz.seite());
}

void Zeilenkodierer::zahlFestlegen(Schreibspalte& spalte, const Messung& messung) const {
    const int breite = plan_.maxZahlbreite();
    spalte.schreibart = Schreibart::Zahl;
    spalte.laenge = std::min(kUeblicheBreite, breite);
    spalte.stellen = kUeblicheStellen;
    if (messung.nachkomma <= kUeblicheStellen && messung.vorkomma + 1 + kUeblicheStellen <= spalte.laenge)
        return;
    spalte.stellen = messung.nachkomma;
    const int noetig = messung.vorkomma + (messung.nachkomma > 0 ? messung.nachkomma + 1 : 0);
    if (noetig <= breite && messung.nachkomma <= kMaxStellen) return;
    throw EngineFehler(
        kFeldZuKlein,
        QStringLiteral("Tabelle '%1', Feld '%2': Die Zahlen der Datensätze %3 und %4 brauchen zusammen "
                       "%5 Stellen, ein Zahlenfeld von dBase hat höchstens %6. Runden Sie die Zahlen.")
            .arg(plan_.tabelle, spalte.name, QString::number(messung.zeileVorkomma),
                 QString::number(messung.zeileNachkomma), QString::number(noetig), QString::number(breite)));
}

void Zeilenkodierer::hinweiseSammeln(const Schreibspalte& spalte, const Messung& messung) {
    const auto hinweis = [&](qint64 anzahl, const QString& text) {
        if (anzahl > 0)
            plan_.hinweise.push_back(
                QStringLiteral("Tabelle '%1', Feld '%2': ").arg(plan_.tabelle, spalte.name) +
                text.arg(anzahl));
    };
    hinweis(spalte.schreibart == Schreibart::Datum ? messung.uhrzeiten : 0,
            QStringLiteral("Ein Datumsfeld von dBase nimmt nur den Tag auf. Weggefallene Uhrzeiten: %1."));
    hinweis(spalte.schreibart == Schreibart::Zeitpunkt ? messung.uhrzeiten : 0,
            QStringLiteral("Das Feld ist jetzt ein Textfeld, da es Uhrzeiten enthält (%1)."));
    hinweis(messung.gerundet, QStringLiteral("Auf die Nachkommastellen des Feldes gerundete Zahlen: %1."));
    hinweis(spalte.schreibart == Schreibart::Memo && plan_.stufe == 3 ? messung.endezeichen : 0,
            QStringLiteral(
                "Mit U+001A beendet dBase III einen Text. Memotexte, aus denen das Zeichen wegfiel: %1."));
}

QByteArray Zeilenkodierer::memobytes(const Schreibspalte& spalte, const Wert& wert) const {
    QString text = wert.alsText();
    if (plan_.stufe == 3) text.remove(QChar(kEndmarke));
    QByteArray bytes;
    qsizetype fehlend = 0;
    if (!plan_.zeichensatz.anhaengen(text, bytes, fehlend))
        ablehnen(kUmwandlung, spalte, QStringLiteral("Der Text passt nicht in den Zeichensatz der Tabelle."));
    return bytes;
}

void Zeilenkodierer::wertSchreiben(const Schreibspalte& spalte, Messung& messung, const Wert& wert,
                                   char* ziel) {
    switch (spalte.schreibart) {
        case Schreibart::Text: {
            QString halter;
            const QStringView text = textVon(wert, halter);
            plan_.zeichensatz.schreiben(text, ziel);
            std::memset(ziel + text.size(), ' ', size_t(spalte.laenge - text.size()));
            return;
        }
        case Schreibart::Wahrheit:
            ziel[0] = (wert.istText() ? wert.text() == u"Wahr" : wert.alsZahl() != 0) ? 'T' : 'F';
            return;
        case Schreibart::Datum:
        case Schreibart::Zeitpunkt:
            if (spalte.art == 'C' ? !zeitpunktSchreiben(datumVon(wert), ziel)
                                  : !datumSchreiben(datumVon(wert), ziel))
                ablehnen(kUmwandlung, spalte,
                         QStringLiteral("Das Datum liegt außerhalb der Jahre 1 bis 9999. Berichtigen "
                                        "oder entfernen Sie es."));
            return;
        case Schreibart::Zahl:
            switch (zahlSchreiben(wert, ziel, spalte.laenge, spalte.stellen)) {
                case Zahlergebnis::Genau:
                    return;
                case Zahlergebnis::Gerundet:
                    ++messung.gerundet;
                    return;
                case Zahlergebnis::PasstNicht:
                    ablehnen(kFeldZuKlein, spalte,
                             QStringLiteral(
                                 "Die Zahl %1 passt nicht in das Feld, das %2 Zeichen breit ist und %3 "
                                 "Nachkommastellen hat. Verbreitern Sie das Feld in der Ausgangstabelle.")
                                 .arg(wert.alsText(), QString::number(spalte.laenge),
                                      QString::number(spalte.stellen)));
            }
            return;
        case Schreibart::Memo:
        case Schreibart::GemesseneZahl:
        case Schreibart::GemessenerText:
            break;
    }
}

void Zeilenkodierer::satz(const engine::Zeile& zeile, char* ziel, const Memoablage& memo) {
    ziel[0] = ' ';
    for (size_t i = 0; i < zeile.size(); ++i) {
        const Schreibspalte& spalte = plan_.spalten[i];
        char* feld = ziel + spalte.ab;
        if (nichts(zeile[i])) {
            leerSchreiben(spalte, feld);
            continue;
        }
        if (spalte.schreibart != Schreibart::Memo) {
            wertSchreiben(spalte, messungen_[i], zeile[i], feld);
            continue;
        }
        const QByteArray bytes = memobytes(spalte, zeile[i]);
        const bool leer = laengeOhneEnde(bytes.constData(), bytes.size()) == 0;
        if (leer)
            leerSchreiben(spalte, feld);
        else
            zahlSchreiben(Wert(memo(bytes)), feld, spalte.laenge, 0);
    }
}

}  // namespace dbase
