// Frames: button states at opening and closing, and the way from frame to frame.
#include "run/rahmen.h"

#include <QScopeGuard>
#include <array>

#include "run/schritte.h"
#include "run/zustand.h"

namespace {

constexpr int kErsterVorgang = 1;
constexpr int kLetzterVorgang = 6;

// What btnWeiter starts, by operation; written once by programm/.
std::array<LaufEinstieg, kLetzterVorgang + 1> laufEinstiege{};
bool laufAktiv = false;  // written by laufStarten

const QString& beschriftungZurueck() {
    static const QString text = QStringLiteral("<<  Zurück");
    return text;
}

const QString& beschriftungWeiter() {
    static const QString text = QStringLiteral("Weiter  >>");
    return text;
}

void knoepfeBeimOeffnen(int rahmen) {
    Fenster& f = fenster();
    switch (rahmen) {
        case 0:
            f.zurueckSichtbar(false);
            f.hilfeSichtbar(false);
            break;
        case 1:
            f.zurueckSichtbar(false);
            break;
        case 5:
            f.weiterSichtbar(false);
            break;
        case 6:
            f.zurueckText(QStringLiteral("Abbrechen"));
            f.weiterSichtbar(false);
            break;
        case 12:
        case 22:
            f.weiterSichtbar(false);
            f.zurueckSichtbar(false);
            break;
        case 11:
        case 21:
        case 31:
        case 41:
            f.weiterText(QStringLiteral("Starten"));
            break;
        case 13:
        case 23:
        case 32:
        case 42:
        case 53:
        case 63:
            f.zurueckSichtbar(false);
            f.weiterText(QStringLiteral("Fertig"));
            break;
        default:
            break;
    }
}

void knoepfeBeimSchliessen(int rahmen) {
    Fenster& f = fenster();
    switch (rahmen) {
        case 0:
        case 1:
            f.zurueckSichtbar(true);
            f.hilfeSichtbar(true);
            break;
        case 5:
            f.weiterSichtbar(true);
            break;
        case 6:
            f.zurueckText(beschriftungZurueck());
            f.weiterSichtbar(true);
            break;
        case 12:
        case 22:
            f.weiterSichtbar(true);
            f.zurueckSichtbar(true);
            break;
        case 11:
        case 21:
        case 31:
        case 41:
        case 51:
        case 61:
            f.weiterText(beschriftungWeiter());
            break;
        case 13:
        case 23:
        case 32:
        case 42:
        case 53:
        case 63:
            f.zurueckSichtbar(true);
            f.weiterText(beschriftungWeiter());
            break;
        default:
            break;
    }
}

bool mitZweiterTabelle() {
    return gVorgang == 5 || gVorgang == 6;
}

void vor(int neu) {
    RahmenWechseln(gRahmen, neu, true, true);
}

void zurueck(int neu, bool fuellen = false) {
    RahmenWechseln(gRahmen, neu, false, fuellen);
}

void zuordnenVon(quint8 schritt, const QString& tabelle) {
    gZuordnungsSchritt = schritt;
    gZuordnungsTabelle = tabelle;
}

int optionsrahmen() {
    switch (gVorgang) {
        case 2:
            return 21;
        case 3:
            return 31;
        case 4:
            return 41;
        default:
            return 11;
    }
}

void weiterVonZuordnung() {
    if (!mitZweiterTabelle()) {
        gZuordnungenTabelle1 = gFeldZuordnungen;
        vor(4);
    } else if (gZuordnungsSchritt == 1) {
        gZuordnungenTabelle1 = gFeldZuordnungen;
        zuordnenVon(2, gZweiteTabelle);
        vor(7);
    } else {
        gZuordnungenTabelle2 = gFeldZuordnungen;
        vor(4);
    }
}

void laufStarten() {
    if (!RahmenSchliessen(gRahmen, true)) return;
    const LaufEinstieg einstieg = laufEinstiege[size_t(gVorgang)];
    if (!einstieg) return;
    laufAktiv = true;
    const auto fertig = qScopeGuard([] { laufAktiv = false; });
    einstieg();
}

void weiter() {
    switch (gRahmen) {
        case 3:
            return vor(5);
        case 4:
            return vor(optionsrahmen());
        case 7:
            return weiterVonZuordnung();
        case 11:
        case 21:
        case 31:
        case 41:
            return laufStarten();
        case 51:
        case 61:
            zuordnenVon(1, gAusgangsTabelle);
            return vor(7);
        case 13:
        case 23:
        case 32:
        case 42:
        case 53:
        case 63:
            return vor(3);
        default:
            return vor(gRahmen + 1);
    }
}

void zurueckVonZiel() {
    if (gVorgang == 3 || gVorgang == 4) return zurueck(5);
    if (mitZweiterTabelle()) zuordnenVon(2, gZweiteTabelle);
    zurueck(7);
}

void zurueckVonZuordnung() {
    if (!mitZweiterTabelle()) return zurueck(5);
    if (gZuordnungsSchritt == 1) return zurueck(gVorgang == 5 ? 51 : 61);
    zuordnenVon(1, gAusgangsTabelle);
    zurueck(7, true);
}

void zurueckVonHier() {
    switch (gRahmen) {
        case 4:
            return zurueckVonZiel();
        case 5:
            return zurueck(3, true);
        case 6:
            return AbbruchErfragen();
        case 7:
            return zurueckVonZuordnung();
        case 11:
        case 21:
        case 31:
        case 41:
            return zurueck(4);
        case 51:
        case 61:
            return zurueck(5);
        default:
            if (RahmenNummern().contains(gRahmen - 1)) zurueck(gRahmen - 1);
    }
}

}  // namespace

const QList<int>& RahmenNummern() {
    static const QList<int> nummern{0,  1,  2,  3,  4,  5,  6,  7,  11, 12, 13,
                                    21, 22, 23, 31, 32, 41, 42, 51, 53, 61, 63};
    return nummern;
}

void RahmenWechseln(int alt, int neu, bool pruefen, bool fuellen) {
    if (RahmenSchliessen(alt, pruefen)) RahmenOeffnen(neu, fuellen);
}

void RahmenOeffnen(int rahmen, bool fuellen) {
    Schritte s([&] { return QStringLiteral("Fehler beim Öffnen des Rahmens %1.").arg(rahmen); });
    s.ablauf(
        [&] {
            s.tu([&] { knoepfeBeimOeffnen(rahmen); });
            if (fuellen) fenster().rahmenFuellen(rahmen, s);
            s.tu([&] { fenster().rahmenSichtbar(rahmen, true); });
            gRahmen = qint16(rahmen);
        },
        [] { gFehler = true; });
}

bool RahmenSchliessen(int rahmen, bool pruefen) {
    if (pruefen && !fenster().rahmenPruefen(rahmen)) return false;
    knoepfeBeimSchliessen(rahmen);
    // Between two frames there is none to hide.
    if (RahmenNummern().contains(rahmen)) fenster().rahmenSichtbar(rahmen, false);
    gRahmen = -1;
    return true;
}

// What a check could not catch (a table that turns out damaged, say) is told, and the frame stays.
void WeiterGehen() {
    Gesichert(weiter);
}

void ZurueckGehen() {
    Gesichert(zurueckVonHier);
}

void VorgangWaehlen(int index) {
    constexpr std::array<quint8, 6> kVorgangZuKnopf{4, 3, 2, 1, 5, 6};
    gVorgang = kVorgangZuKnopf.at(size_t(index));
    Gesichert([] {
        switch (gVorgang) {
            case 1:
            case 2:
                gZuordnungsTabelle = gAusgangsTabelle;
                return RahmenWechseln(5, 7, true, true);
            case 3:
            case 4:
                return RahmenWechseln(5, 4, true, true);
            case 5:
                return RahmenWechseln(5, 51, true, true);
            default:
                return RahmenWechseln(5, 61, true, true);
        }
    });
}

void AbbruchErfragen() {
    if (FrageStellen(QStringLiteral("Wollen sie den aktuellen Vorgang wirklich abbrechen?"),
                     Symbol::Ausrufezeichen, Knopf::Nein))
        gAbbruch = true;
}

void LaufEinstiegSetzen(int vorgang, LaufEinstieg einstieg) {
    Q_ASSERT(vorgang >= kErsterVorgang && vorgang <= kLetzterVorgang);
    laufEinstiege[size_t(vorgang)] = einstieg;
}

bool LaufAktiv() {
    return laufAktiv;
}
