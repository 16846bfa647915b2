// A window for tools without one: shows nothing, keeps what it was told, and presses Abbrechen.
#pragma once

#include "run/fenster.h"

class StummesFenster : public Fenster {
  public:
    Knopf meldungZeigen(const Meldung& meldung) override;
    // The text of the last box since the last call.
    QString meldungAbholen();

    void rahmenSichtbar(int, bool) override {}
    void rahmenFuellen(int, Schritte&) override {}
    bool rahmenPruefen(int) override { return true; }
    void zurueckSichtbar(bool) override {}
    void weiterSichtbar(bool) override {}
    void hilfeSichtbar(bool) override {}
    void zurueckText(const QString&) override {}
    void weiterText(const QString&) override {}
    void zurueckAktiv(bool) override {}
    void information(const QString&) override {}
    void datensaetze(const QString&) override {}
    void dauer(const QString&) override {}
    void verbleibendeZeit(const QString&) override {}
    void teilFortschritt(float) override {}
    float teilFortschritt() const override { return 0; }
    void teilFortschrittText(const QString&) override {}
    void taktgeber(bool) override {}
    void ereignisseVerarbeiten() override {}
    void nurZeichnen() override {}
    void neuZeichnen() override {}
    void sanduhr(bool) override {}
    Suchoptionen suchoptionen() override { return {}; }
    Muelloptionen muelloptionen() override { return muelloptionen_; }
    Splittoptionen splittoptionen() override { return {}; }
    Verschmelzoptionen verschmelzoptionen() override { return {}; }
    void dublettenBearbeiten() override {}
    void muellBearbeiten() override {}

    void muelloptionenSetzen(const Muelloptionen& optionen) { muelloptionen_ = optionen; }

  private:
    QString meldung_;
    Muelloptionen muelloptionen_;
};

// The one of this tool, set as the program's window.
StummesFenster& stummesFenster();
