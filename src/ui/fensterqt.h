// The waist of run/ on top of the real window.
#pragma once

#include "run/fenster.h"

class FrmHaupt;

class FensterQt : public Fenster {
  public:
    // The window must outlive it.
    explicit FensterQt(FrmHaupt& haupt) : haupt_(haupt) {}

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
    void datensaetze(const QString& text) override;
    void dauer(const QString& text) override;
    void verbleibendeZeit(const QString& text) override;
    void teilFortschritt(float prozent) override;
    float teilFortschritt() const override;
    void teilFortschrittText(const QString& text) override;
    void taktgeber(bool an) override;
    void ereignisseVerarbeiten() override;
    void nurZeichnen() override;
    void neuZeichnen() override;
    void sanduhr(bool an) override;
    Suchoptionen suchoptionen() override;
    Muelloptionen muelloptionen() override;
    Splittoptionen splittoptionen() override;
    Verschmelzoptionen verschmelzoptionen() override;
    void dublettenBearbeiten() override;
    void muellBearbeiten() override;

  private:
    FrmHaupt& haupt_;
};
