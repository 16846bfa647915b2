// The one door for message boxes, input boxes and the file dialog.
#include "ui/dialoge.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "ui/bausteine.h"

namespace {

Dialogantworten antworten;  // set by DialogantwortenSetzen, read by the three askers

QWidget* oberstesFenster() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* aktiv = QApplication::activeWindow()) return aktiv;
    for (QWidget* fenster : QApplication::topLevelWidgets())
        if (fenster->isVisible() && fenster->objectName() == u"frmHaupt") return fenster;
    return nullptr;
}

// A box that only its buttons close, unless there is nothing to decide.
class Meldungsfenster : public QMessageBox {
  public:
    Meldungsfenster(QWidget* eltern, bool nurOk) : QMessageBox(eltern), nurOk_(nurOk) {}

  protected:
    void keyPressEvent(QKeyEvent* ereignis) override {
        if (ereignis->key() == Qt::Key_Escape && !nurOk_) return ereignis->accept();
        QMessageBox::keyPressEvent(ereignis);
    }
    void closeEvent(QCloseEvent* ereignis) override {
        if (!nurOk_) return ereignis->ignore();
        QMessageBox::closeEvent(ereignis);
    }

  private:
    bool nurOk_;
};

QMessageBox::Icon iconVon(Symbol symbol) {
    switch (symbol) {
        case Symbol::Information:
            return QMessageBox::Information;
        case Symbol::Ausrufezeichen:
            return QMessageBox::Warning;
        case Symbol::Kritisch:
            return QMessageBox::Critical;
        case Symbol::Keines:
            break;
    }
    return QMessageBox::NoIcon;
}

QString mitKuerzel(Knopf knopf) {
    return knopf == Knopf::Ok ? KnopfText(knopf) : u'&' + KnopfText(knopf);
}

// The style would order buttons by their roles; all of one role stay in the order in which they are added.
void knoepfeAnlegen(QMessageBox& kasten, const Meldung& meldung) {
    for (const Knopf knopf : KnoepfeVon(meldung.knoepfe)) {
        QPushButton* taste = kasten.addButton(mitKuerzel(knopf), QMessageBox::ActionRole);
        taste->setProperty("knopf", int(knopf));
        if (knopf == meldung.vorwahl) kasten.setDefaultButton(taste);
    }
}

// The toolkit makes no box wider; a label that insists on more is cut off.
int groessteBreite(const QMessageBox& kasten) {
    constexpr int kKleinerSchirm = 1024, kDaneben = 480, kGroesste = 1000;
    const int schirm = kasten.screen()->availableSize().width();
    return schirm <= kKleinerSchirm ? schirm : std::min(schirm - kDaneben, kGroesste);
}

// The lines of a text stay as they are told, as far as the box may be wide enough; what is wider is wrapped.
void zeilenErhalten(QMessageBox& kasten) {
    auto* label = kasten.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!label) return;
    constexpr double kAnteil = 0.8;
    const QFontMetrics schrift = label->fontMetrics();
    const int breite =
        std::min(schrift.size(0, kasten.text()).width(), int(kAnteil * groessteBreite(kasten)));
    label->setMinimumWidth(breite);
    kasten.setText(MitBruchstellen(kasten.text(), schrift, breite));
}

// The dialog takes its patterns from the last brackets, with blanks between, and hides those.
QString mitMustern(const QString& filter) {
    const qsizetype klammer = filter.lastIndexOf(u'(');
    return filter + u' ' + filter.mid(klammer).replace(u';', u' ');
}

QStringList mitMustern(const QStringList& filter) {
    QStringList ergebnis;
    for (const QString& einer : filter) ergebnis << mitMustern(einer);
    return ergebnis;
}

// The pointer of a long action must not stand over a question.
class OhneSanduhr {
  public:
    OhneSanduhr() : an_(QApplication::overrideCursor() != nullptr) {
        if (an_) QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~OhneSanduhr() {
        if (an_) QApplication::restoreOverrideCursor();
    }
    OhneSanduhr(const OhneSanduhr&) = delete;
    OhneSanduhr& operator=(const OhneSanduhr&) = delete;

  private:
    bool an_;
};

}  // namespace

QList<Knopf> KnoepfeVon(Knoepfe knoepfe) {
    switch (knoepfe) {
        case Knoepfe::JaNein:
            return {Knopf::Ja, Knopf::Nein};
        case Knoepfe::AbbrechenWiederholenIgnorieren:
            return {Knopf::Abbrechen, Knopf::Wiederholen, Knopf::Ignorieren};
        case Knoepfe::Ok:
            break;
    }
    return {Knopf::Ok};
}

QString KnopfText(Knopf knopf) {
    switch (knopf) {
        case Knopf::Abbrechen:
            return QStringLiteral("Abbrechen");
        case Knopf::Wiederholen:
            return QStringLiteral("Wiederholen");
        case Knopf::Ignorieren:
            return QStringLiteral("Ignorieren");
        case Knopf::Ja:
            return QStringLiteral("Ja");
        case Knopf::Nein:
            return QStringLiteral("Nein");
        case Knopf::Ok:
            break;
    }
    return QStringLiteral("OK");
}

Knopf MeldungAnzeigen(const Meldung& meldung) {
    if (antworten.meldung) return antworten.meldung(meldung);
    OhneSanduhr zeiger;
    const bool nurOk = meldung.knoepfe == Knoepfe::Ok;
    Meldungsfenster kasten(oberstesFenster(), nurOk);
    kasten.setObjectName(QString::fromUtf16(kMeldungsfenster));
    kasten.setWindowTitle(meldung.titel);
    kasten.setTextFormat(Qt::PlainText);
    kasten.setText(AlsZeilen(meldung.text));
    kasten.setIcon(iconVon(meldung.symbol));
    kasten.setProperty("symbol", int(meldung.symbol));
    knoepfeAnlegen(kasten, meldung);
    zeilenErhalten(kasten);
    if (nurOk) kasten.setEscapeButton(kasten.buttons().constFirst());
    kasten.exec();
    return kasten.clickedButton() ? Knopf(kasten.clickedButton()->property("knopf").toInt())
                                  : meldung.vorwahl;
}

std::optional<QString> EingabeErfragen(const Eingabefrage& frage) {
    if (antworten.eingabe) return antworten.eingabe(frage);
    QInputDialog kasten(oberstesFenster());
    kasten.setObjectName(QString::fromUtf16(kEingabefenster));
    kasten.setWindowTitle(frage.titel);
    kasten.setLabelText(OhneKuerzel(AlsZeilen(frage.text)));
    kasten.setTextValue(frage.vorgabe);
    kasten.setOkButtonText(KnopfText(Knopf::Ok));
    kasten.setCancelButtonText(KnopfText(Knopf::Abbrechen));
    if (kasten.exec() != QDialog::Accepted) return std::nullopt;
    return kasten.textValue();
}

std::optional<Dateiwahl> DateiErfragen(const Dateifrage& frage) {
    if (antworten.datei) return antworten.datei(frage);
    QFileDialog dialog(oberstesFenster(), QStringLiteral("Öffnen"), frage.ordner);
    dialog.setObjectName(QString::fromUtf16(kDateifenster));
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QStringList filter = mitMustern(frage.filter);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(filter);
    dialog.selectNameFilter(filter.value(frage.filterIndex - 1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    // Named with its patterns or as it is shown, by the version of the dialog.
    const QString gewaehlt = dialog.selectedNameFilter();
    const int stelle = int(std::max(filter.indexOf(gewaehlt), frage.filter.indexOf(gewaehlt)));
    return Dateiwahl{dialog.selectedFiles().constFirst(), stelle < 0 ? frage.filterIndex : stelle + 1};
}

void DialogantwortenSetzen(Dialogantworten neue) {
    antworten = std::move(neue);
}
