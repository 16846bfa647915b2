// A window that is a script of answers: it records what it is asked and fails the test at a box nobody
// expected.
#pragma once

#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

#include "run/fenster.h"

class Fensterattrappe : public Fenster {
  public:
    // Becomes the window; every DoEvents pumps. The destructor fails the test when an expected box did not
    // come.
    Fensterattrappe();
    ~Fensterattrappe() override;

    // The next box not yet expected must have this text; it is answered with the button.
    void erwarte(const QString& text, Knopf knopf = Knopf::Ok);
    // Answers every box for which nothing is queued.
    std::function<Knopf(const Meldung&)> sonst;

    std::function<void()> beimEreignis;        // runs at every pump
    std::function<void(int)> beimFuellen;      // may throw
    std::function<bool(int)> beimPruefen;      // may throw; without it every frame is well
    std::function<void()> beimNachbearbeiten;  // the review
    Suchoptionen optionen;
    Muelloptionen muell;
    Splittoptionen splitten;
    Verschmelzoptionen verschmelzen;

    std::vector<Meldung> meldungen;
    QStringList protokoll;      // frames and buttons in the order of the calls, "sichtbar 6 an"
    QStringList informationen;  // lblInformation, one after the other
    QString datensatzText, dauerText, restText, prozentText, zurueckKnopf, weiterKnopf;
    float prozent = -1;
    bool takt = false;
    bool sanduhrAn = false;
    bool zurueckKnopfAktiv = true;
    int ereignisse = 0;
    int zeichnungen = 0;

    Knopf meldungZeigen(const Meldung& meldung) override;
    void rahmenSichtbar(int rahmen, bool sichtbar) override;
    void rahmenFuellen(int rahmen, Schritte& s) override;
    bool rahmenPruefen(int rahmen) override;
    void zurueckSichtbar(bool sichtbar) override;
    void weiterSichtbar(bool sichtbar) override;
    void hilfeSichtbar(bool sichtbar) override;
    void zurueckText(const QString& text) override;
    void weiterText(const QString& text) override;
    void zurueckAktiv(bool aktiv) override;
    void information(const QString& text) override;
    void datensaetze(const QString& text) override { datensatzText = text; }
    void dauer(const QString& text) override { dauerText = text; }
    void verbleibendeZeit(const QString& text) override { restText = text; }
    void teilFortschritt(float wert) override { prozent = wert; }
    float teilFortschritt() const override { return prozent; }
    void teilFortschrittText(const QString& text) override { prozentText = text; }
    void taktgeber(bool an) override { takt = an; }
    void ereignisseVerarbeiten() override;
    void nurZeichnen() override { ++zeichnungen; }
    void neuZeichnen() override { protokoll << QStringLiteral("neuZeichnen"); }
    void sanduhr(bool an) override { sanduhrAn = an; }
    Suchoptionen suchoptionen() override { return optionen; }
    Muelloptionen muelloptionen() override { return muell; }
    Splittoptionen splittoptionen() override { return splitten; }
    Verschmelzoptionen verschmelzoptionen() override { return verschmelzen; }
    void dublettenBearbeiten() override;
    void muellBearbeiten() override { dublettenBearbeiten(); }

  private:
    struct Antwort {
        QString text;
        Knopf knopf;
    };
    std::deque<Antwort> antworten_;
};
