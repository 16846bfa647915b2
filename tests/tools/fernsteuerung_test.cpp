// The remote control over its pipes: every command on the real window, and what it refuses.
#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include "tools/zeilenprogramm.h"

namespace {

// A running program with a store and a sample database of its own.
class Fernsteuerung : public ::testing::Test {
  protected:
    QJsonObject antwort(const QString& cmd, QJsonObject felder = {}) {
        felder["cmd"] = cmd;
        return programm.antwort(felder);
    }
    QJsonValue tu(const QString& cmd, const QJsonObject& felder = {}) {
        const QJsonObject a = antwort(cmd, felder);
        EXPECT_TRUE(a.contains("result")) << qPrintable(cmd) << ": " << qPrintable(a["error"].toString());
        return a["result"];
    }
    QString fehler(const QString& cmd, const QJsonObject& felder = {}) {
        const QJsonObject a = antwort(cmd, felder);
        EXPECT_TRUE(a.contains("error")) << qPrintable(cmd);
        return a["error"].toString();
    }
    void klicken(const char* objekt) { tu("klicken", {{"objekt", objekt}}); }
    void setzen(const char* objekt, const QJsonValue& wert) {
        tu("setzen", {{"objekt", objekt}, {"wert", wert}});
    }
    qsizetype zeilenzahl(const char* gitter) {
        return tu("gitter", {{"objekt", gitter}})["zeilen"].toArray().size();
    }
    QJsonValue lesen(const char* objekt) { return tu("lesen", {{"objekt", objekt}}); }
    // An answer to a click says that it has arrived, not that all that it set in motion is done.
    template <class Frage>
    void wirdWahr(const Frage& frage) {
        const QDeadlineTimer frist(60000);
        while (!frage() && !frist.hasExpired()) continue;
        EXPECT_TRUE(frage());
    }
    void rahmen(int nummer) { tu("warten", {{"auf", "rahmen"}, {"wert", nummer}}); }
    void weiter(int nummer) {
        klicken("btnWeiter");
        rahmen(nummer);
    }

    void zurDatenbank() {
        rahmen(0);
        weiter(1);
        weiter(2);
    }
    void zurTabelle() {
        zurDatenbank();
        setzen("tbxDatenbankName", datei);
        weiter(3);
    }
    void zuDenFeldern() {
        zurTabelle();
        setzen("lstTabellen", "Adressen");
        weiter(5);
        klicken("btnAuswahl_3");
        rahmen(7);
    }
    void zuDenSuchoptionen() {
        zuDenFeldern();
        weiter(4);
        weiter(11);
    }

    static QProcessEnvironment umgebung(const QTemporaryDir& ordner) {
        auto umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("QT_QPA_PLATFORM", "offscreen");
        umgebung.insert("LINDGARN_ABLAGE", ordner.filePath("ablage"));
        umgebung.insert("LINDGARN_ORDNER", ordner.path());
        return umgebung;
    }
    static QString kopie(const QTemporaryDir& ordner) {
        const QString ziel = ordner.filePath("a.mdb");
        EXPECT_TRUE(QFile::copy(QStringLiteral(LINDGARN_BEISPIELE "/adressen.mdb"), ziel));
        return ziel;
    }

    QTemporaryDir ordner;
    QString datei = kopie(ordner);
    Zeilenprogramm programm{QStringLiteral(LINDGARN_FERNSTEUERUNG), umgebung(ordner)};
};

TEST_F(Fernsteuerung, UnlesbaresUndUnbekanntesGibtFehler) {
    for (const char* zeile :
         {"{", "[]", R"({"id":1})", R"({"id":1,"cmd":"gibtsnicht"})", R"({"id":1,"cmd":"lesen"})"}) {
        const QByteArray antwort = programm.zeile(zeile);
        EXPECT_TRUE(QJsonDocument::fromJson(antwort).object().contains("error")) << antwort.constData();
    }
    EXPECT_TRUE(fehler("klicken", {{"objekt", "btnNirgends"}}).contains("btnNirgends"));
    EXPECT_TRUE(fehler("lesen", {{"objekt", "frmNirgends.btnWeiter"}}).contains("frmNirgends"));
    EXPECT_TRUE(fehler("warten", {{"auf", "Godot"}}).contains("Godot"));
    rahmen(0);
}

TEST_F(Fernsteuerung, LiestDasFensterUndSeineKnoepfe) {
    rahmen(0);
    EXPECT_EQ(lesen("frmHaupt")["text"], QJsonValue(" Lindgarn"));
    const QJsonValue knopf = lesen("frmHaupt.btnWeiter");
    EXPECT_EQ(knopf, lesen("btnWeiter"));
    EXPECT_EQ(knopf["sichtbar"], QJsonValue(true));
    EXPECT_GT(knopf["breite"].toInt(), 0);
    EXPECT_GT(knopf["hoehe"].toInt(), 0);
    EXPECT_EQ(tu("zustand")["gRahmen"], QJsonValue(0));
    EXPECT_EQ(tu("zustand")["gDublettenAnzahl"], QJsonValue(0));
}

TEST_F(Fernsteuerung, BedientNurWasEinBenutzerBedienenKann) {
    rahmen(0);
    EXPECT_TRUE(fehler("setzen", {{"objekt", "tbxDatenbankName"}, {"wert", "x"}}).contains("nicht sichtbar"));
    EXPECT_TRUE(fehler("klicken", {{"objekt", "btnAuswahl_3"}}).contains("nicht sichtbar"));
    EXPECT_TRUE(fehler("setzen", {{"objekt", "btnWeiter"}, {"wert", true}}).contains("nicht setzen"));
}

TEST_F(Fernsteuerung, WartenGibtAuf) {
    const QString text = fehler("warten", {{"auf", "rahmen"}, {"wert", 3}, {"ms", 20}});
    EXPECT_TRUE(text.contains("Zeit abgelaufen") && text.contains("Rahmen 0")) << qPrintable(text);
}

TEST_F(Fernsteuerung, TasteUndText) {
    zurDatenbank();
    setzen("tbxDatenbankName", "abc");
    tu("taste", {{"objekt", "tbxDatenbankName"}, {"taste", "Backspace"}});
    EXPECT_EQ(lesen("tbxDatenbankName")["text"], QJsonValue("ab"));
    setzen("tbxDatenbankName", "");
    EXPECT_EQ(lesen("tbxDatenbankName")["text"], QJsonValue(""));
    const bool vorher = tu("zustand")["gSystemmeldungZeigen"].toBool();
    tu("taste", {{"taste", "Ctrl+F"}});
    EXPECT_EQ(tu("zustand")["gSystemmeldungZeigen"].toBool(), !vorher);
    EXPECT_TRUE(fehler("taste", {{"taste", "Quatsch"}}).contains("Quatsch"));
}

TEST_F(Fernsteuerung, EineMeldungWirdGelesenUndGedrueckt) {
    zurDatenbank();
    EXPECT_TRUE(tu("meldung").isNull());
    EXPECT_TRUE(fehler("druecken", {{"knopf", "OK"}}).contains("keine Meldung"));
    setzen("tbxDatenbankName", ordner.filePath("fehlt.mdb"));
    klicken("btnWeiter");
    tu("warten", {{"auf", "meldung"}});
    EXPECT_EQ(tu("meldung"), (QJsonObject{{"titel", " Achtung!"},
                                          {"text", "Datei kann nicht geöffnet werden."},
                                          {"symbol", "Ausrufezeichen"},
                                          {"knoepfe", QJsonArray{"OK"}},
                                          {"vorwahl", "OK"}}));
    EXPECT_TRUE(fehler("klicken", {{"objekt", "frmHaupt.btnWeiter"}}).contains("hinter dem Fenster"));
    EXPECT_TRUE(fehler("beenden").contains("hinter dem Fenster"));
    EXPECT_TRUE(fehler("druecken", {{"knopf", "Nein"}}).contains("Nein"));
    EXPECT_TRUE(fehler("druecken", {{"knopf", "OK"}, {"eingabe", "x"}}).contains("keine Eingabe"));
    tu("druecken", {{"knopf", "OK"}});
    EXPECT_TRUE(tu("meldung").isNull());
    EXPECT_EQ(tu("zustand")["gRahmen"], QJsonValue(2));
}

TEST_F(Fernsteuerung, DerDateidialogWirdBeantwortet) {
    zurDatenbank();
    EXPECT_TRUE(fehler("dateidialog", {{"abbrechen", true}}).contains("nicht offen"));
    klicken("btnDatenbankAuswählen");
    tu("warten", {{"auf", "meldung"}});
    const QJsonValue gezeigt = tu("dateidialog", {{"abbrechen", true}});
    EXPECT_EQ(gezeigt["filter"].toArray().size(), 6);
    EXPECT_EQ(gezeigt["filter"][0], "Alle Datendateien (*.mdb;*.xls;*.dbf)");
    EXPECT_FALSE(gezeigt["ordner"].toString().isEmpty());
    EXPECT_EQ(lesen("tbxDatenbankName")["text"], QJsonValue(""));
    klicken("btnDatenbankAuswählen");
    tu("warten", {{"auf", "meldung"}});
    tu("dateidialog", {{"datei", datei}, {"filter", 2}});
    EXPECT_EQ(lesen("tbxDatenbankName")["text"], QJsonValue(datei));
    klicken("btnDatenbankAuswählen");
    tu("warten", {{"auf", "meldung"}});
    EXPECT_EQ(tu("dateidialog", {{"abbrechen", true}})["ordner"], QJsonValue(ordner.path()));
}

TEST_F(Fernsteuerung, EinEingabekastenNimmtSeinenText) {
    zurTabelle();
    EXPECT_EQ(lesen("lstTabellen")["eintraege"], QJsonValue(QJsonArray{"Adressen", "Interessenten"}));
    EXPECT_EQ(lesen("lstTabellen")["index"], QJsonValue(-1));
    setzen("lstTabellen", QJsonObject{{"index", 1}});
    EXPECT_EQ(lesen("lstTabellen")["text"], QJsonValue("Interessenten"));
    klicken("cmdTabelleUmbenennen");
    tu("warten", {{"auf", "meldung"}});
    EXPECT_EQ(tu("meldung")["knoepfe"], QJsonValue(QJsonArray{"OK", "Abbrechen"}));
    tu("druecken", {{"knopf", "OK"}, {"eingabe", "Anfragen"}});
    // The button has been pressed; the file is written behind it.
    const QJsonValue umbenannt(QJsonArray{"Adressen", "Anfragen"});
    wirdWahr([&] { return lesen("lstTabellen")["eintraege"] == umbenannt; });
}

TEST_F(Fernsteuerung, MenueDerZeileUndDesFensters) {
    zuDenFeldern();
    const QString vorher = lesen("lstFelder")["eintraege"][16].toString();
    EXPECT_TRUE(vorher.contains("(Ignorieren)")) << qPrintable(vorher);
    tu("menue", {{"objekt", "lstFelder"}, {"zeile", 16}, {"pfad", QJsonArray{"Index"}}});
    EXPECT_TRUE(lesen("lstFelder")["eintraege"][16].toString().contains("(Index)"));
    tu("menue", {{"objekt", "lstFelder"}, {"zeile", 16}, {"pfad", QJsonArray{"Adresse", "Ort"}}});
    EXPECT_TRUE(lesen("lstFelder")["eintraege"][16].toString().contains("(Ort)"));
    EXPECT_TRUE(fehler("menue", {{"pfad", QJsonArray{"Programm", "Unsinn"}}}).contains("Unsinn"));
    EXPECT_TRUE(fehler("menue", {{"pfad", QJsonArray{"Programm"}}}).contains("Pfad"));
    tu("menue", {{"pfad", QJsonArray{"Programm", "Beenden"}}});
    EXPECT_EQ(programm.enden(), 0);
}

TEST_F(Fernsteuerung, AuswahlHakenUndRegler) {
    zuDenSuchoptionen();
    setzen("cbxSuchFeld_0", "Ort");
    EXPECT_EQ(lesen("cbxSuchFeld_0")["text"], QJsonValue("Ort"));
    setzen("cbxSuchFeld_0", QJsonObject{{"index", 0}});
    EXPECT_EQ(lesen("cbxSuchFeld_0")["index"], QJsonValue(0));
    EXPECT_EQ(lesen("cbxSuchFeld_0")["eintraege"].toArray().size(), 18);
    setzen("sdrToleranz", 3);
    EXPECT_EQ(lesen("sdrToleranz")["wert"], QJsonValue(3));
    for (const bool an : {true, true, false}) {
        setzen("chkQuickSuche", an);
        EXPECT_EQ(lesen("chkQuickSuche")["wert"], QJsonValue(an));
    }
    EXPECT_TRUE(fehler("setzen", {{"objekt", "cbxSuchFeld_0"}, {"wert", "Mond"}}).contains("passt nicht"));
    EXPECT_TRUE(fehler("setzen", {{"objekt", "sdrToleranz"}, {"wert", 9}}).contains("passt nicht"));
    setzen("chkSucheDurchführen_2", 0);
    EXPECT_TRUE(fehler("setzen", {{"objekt", "cbxSuchFeld_6"}, {"wert", "Ort"}}).contains("nicht aktiv"));
}

TEST_F(Fernsteuerung, EinGanzerLaufMitGitterMausUndBild) {
    zuDenSuchoptionen();
    klicken("btnWeiter");
    tu("warten", {{"auf", "fenster"}, {"wert", "frmDublettenBearbeiten"}});
    const QJsonValue vorher = tu("gitter", {{"objekt", "dgdAngereichert"}});
    const qsizetype saetze = vorher["zeilen"].toArray().size();
    ASSERT_GT(saetze, 10);
    EXPECT_EQ(vorher["aktuell"], QJsonValue(0));
    EXPECT_EQ(vorher["spalten"][0]["titel"], QJsonValue("--< Anmerkungen >--"));
    EXPECT_EQ(vorher["spalten"][vorher["spalten"].toArray().size() - 1]["sichtbar"], QJsonValue(false));
    EXPECT_EQ(vorher["zeilen"][0].toArray().size(), vorher["spalten"].toArray().size());
    tu("maus", {{"objekt", "dgdAngereichert"}, {"knopf", "links"}, {"zeile", 3}});
    wirdWahr([&] { return tu("gitter", {{"objekt", "dgdAngereichert"}})["aktuell"] == QJsonValue(3); });
    tu("maus", {{"objekt", "dgdAngereichert"}, {"knopf", "rechts"}, {"zeile", 3}});
    wirdWahr([&] { return zeilenzahl("dgdAngereichert") == saetze - 1; });
    wirdWahr([&] { return zeilenzahl("dgdÜbernehmen") == 1; });
    EXPECT_TRUE(fehler("maus", {{"objekt", "dgdAngereichert"}, {"zeile", 5000}}).contains("5000"));

    tu("bild", {{"datei", ordner.filePath("bild.png")}});
    QFile bild(ordner.filePath("bild.png"));
    ASSERT_TRUE(bild.open(QIODevice::ReadOnly));
    EXPECT_EQ(bild.read(4), QByteArray("\x89PNG"));
    EXPECT_TRUE(fehler("bild", {{"datei", ordner.filePath("fehlt/bild.png")}}).contains("fehlt"));

    klicken("btnAngereichert");
    wirdWahr([&] { return lesen("btnFertig")["aktiv"].toBool(); });
    klicken("btnFertig");
    tu("warten", {{"auf", "meldung"}});
    EXPECT_EQ(tu("meldung")["knoepfe"], QJsonValue(QJsonArray{"Ja", "Nein"}));
    tu("druecken", {{"knopf", "Ja"}});
    tu("warten", {{"auf", "ende"}});
    rahmen(13);
    EXPECT_GT(tu("zustand")["gDublettenAnzahl"].toInt(), 50);
}

TEST_F(Fernsteuerung, BeendenSchliesstDasProgramm) {
    rahmen(0);
    EXPECT_EQ(tu("beenden"), QJsonValue(true));
    EXPECT_EQ(programm.enden(), 0);
}

TEST_F(Fernsteuerung, DasEndeDerEingabeBeendetAuchHinterEinerMeldung) {
    zurDatenbank();
    klicken("btnWeiter");
    tu("warten", {{"auf", "meldung"}});
    EXPECT_EQ(programm.beenden(), 0);
    EXPECT_EQ(programm.rest(), "");
}

TEST_F(Fernsteuerung, DasEndeDerEingabeBeendet) {
    rahmen(0);
    EXPECT_EQ(programm.beenden(), 0);
}

}  // namespace
