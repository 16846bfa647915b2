// The waist: what run control and the runs may ask of the window.
#pragma once

#include <QString>
#include <optional>

class Schritte;

enum class Symbol { Keines, Information, Ausrufezeichen, Kritisch };
enum class Knoepfe { Ok, JaNein, AbbrechenWiederholenIgnorieren };
enum class Knopf : int { Ok = 1, Abbrechen = 3, Wiederholen = 4, Ignorieren = 5, Ja = 6, Nein = 7 };

// A message box. A carriage return inside the text is a line break.
struct Meldung {
    QString titel;
    QString text;
    Symbol symbol = Symbol::Keines;
    Knoepfe knoepfe = Knoepfe::Ok;
    Knopf vorwahl = Knopf::Ok;
};

// The options of frame 11 as they stand in its controls.
struct Suchoptionen {
    int suchFeld[9] = {};       // ListIndex of cbxSuchFeld; 0 is "*** Unbenutzt ***", n the n-th field
    bool durchfuehren[3] = {};  // chkSucheDurchführen
    int zeichenRichtig[3] = {2, 5, 5};  // sdrZeichenRichtig, 1 to 5
    int toleranz = 1;                   // sdrToleranz, 0 to 3
    bool quickSuche = false;
    bool ansprechpartnerDifferenzieren = false;
};

// The check boxes of frame 21, each with its value; only exactly 1 is set. A box that stands disabled keeps
// its value, which counts.
struct Muelloptionen {
    int firmenname = 1;
    int rechtsform = 0;
    int branche = 0;
    int postalisch = 1;
    int hausnummer = 1;
    int kontakt = 0;
    int anrede = 0;
    int vorname = 0;
    int nachname = 1;
    int abteilung = 0;
    int telefon = 1;
    int fax = 0;
    int email = 0;
    int internet = 0;
};

// The options of frame 31.
struct Splittoptionen {
    int typ = 0;  // ListIndex of cbxSplittenTypus, 0 to 5
    QString feld1, feld2;
    QString trennzeichen;  // counts for type 5
    QString namen[3];      // of the new fields; the third one counts for types 2 and 4
    bool loeschen = false;
};

// The options of frame 41.
struct Verschmelzoptionen {
    QString feld1, feld2;
    QString name;                         // of the new field
    std::optional<QString> trennzeichen;  // nothing: the values are joined without one
    bool loeschen = false;
};

class Fenster {
  public:
    virtual ~Fenster() = default;

    // Shows a modal box and returns the button pressed.
    virtual Knopf meldungZeigen(const Meldung& meldung) = 0;

    // Frames. Filling runs as steps of the caller's procedure. Checking may raise EngineFehler; it shows its
    // own messages and returns whether all is well. `rahmen` is a frame number.
    virtual void rahmenSichtbar(int rahmen, bool sichtbar) = 0;
    virtual void rahmenFuellen(int rahmen, Schritte& s) = 0;
    virtual bool rahmenPruefen(int rahmen) = 0;
    virtual void zurueckSichtbar(bool sichtbar) = 0;
    virtual void weiterSichtbar(bool sichtbar) = 0;
    virtual void hilfeSichtbar(bool sichtbar) = 0;
    virtual void zurueckText(const QString& text) = 0;
    virtual void weiterText(const QString& text) = 0;
    virtual void zurueckAktiv(bool aktiv) = 0;

    // Frame 6.
    virtual void information(const QString& text) = 0;          // lblInformation
    virtual void datensaetze(const QString& text) = 0;          // lblDatensätze
    virtual void dauer(const QString& text) = 0;                // lblDauer
    virtual void verbleibendeZeit(const QString& text) = 0;     // lblVerbleibendeZeit
    virtual void teilFortschritt(float prozent) = 0;            // pgbTeilFortschritt, 0 to 100
    virtual float teilFortschritt() const = 0;                  // the value read back from the bar
    virtual void teilFortschrittText(const QString& text) = 0;  // lblTeilFortschritt
    virtual void taktgeber(bool an) = 0;                        // tmrDauer and tmrFortschritt

    // Serves timers, painting and the user's clicks.
    virtual void ereignisseVerarbeiten() = 0;
    // The same without the user's clicks and keys, for moments in which nothing may re-enter.
    virtual void nurZeichnen() = 0;
    virtual void neuZeichnen() = 0;     // repaints the main window at once
    virtual void sanduhr(bool an) = 0;  // hourglass pointer

    virtual Suchoptionen suchoptionen() = 0;
    virtual Muelloptionen muelloptionen() = 0;
    virtual Splittoptionen splittoptionen() = 0;
    virtual Verschmelzoptionen verschmelzoptionen() = 0;
    // Loads frmDublettenBearbeiten and shows it modally; it sets `gAbbruch` or `gFehler` when it was not
    // confirmed, and `gAnzahlAngereichert` when it was.
    virtual void dublettenBearbeiten() = 0;
    // Loads frmMüllBearbeiten and shows it modally; it sets `gAbbruch` or `gFehler` when it was not
    // confirmed.
    virtual void muellBearbeiten() = 0;
};

// The one window. Set before anything of run/ is used; the caller keeps ownership.
void FensterSetzen(Fenster* fenster);
Fenster& fenster();

// The yield of every loop of a run, once per item. Cheap: events are pumped when some milliseconds have
// passed since the last time, so timers and the abort button stay live.
void DoEvents();

// Tests only: the least time between two pumps of `DoEvents`; 0 pumps at every call. The program's own is 8.
void DoEventsAbstandSetzen(int ms);
