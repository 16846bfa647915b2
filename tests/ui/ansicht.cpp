// What every window has to keep.
#include "ui/ansicht.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>
#include <QStackedWidget>
#include <QStyleOptionSlider>
#include <QTest>

namespace {

QString wer(const QWidget* teil) {
    const QString name = teil->objectName();
    if (!name.isEmpty()) return name;
    if (const auto* label = qobject_cast<const QLabel*>(teil)) return label->text();
    return QString::fromLatin1(teil->metaObject()->className());
}

// The toolkit's name for the text of a box.
constexpr QStringView kKastentext = u"qt_msgbox_label";

// The program's own parts; what a control consists of is the toolkit's matter.
QList<QWidget*> teile(QWidget* fenster) {
    QList<QWidget*> eigene;
    for (QWidget* teil : fenster->findChildren<QWidget*>()) {
        const bool fremd = teil->objectName().startsWith(u"qt_") && teil->objectName() != kKastentext;
        bool innen = !teil->isVisible() || teil->isWindow() || fremd;
        for (const QWidget* w = teil->parentWidget(); w && w != fenster; w = w->parentWidget())
            innen = innen || qobject_cast<const QAbstractScrollArea*>(w) ||
                    qobject_cast<const QComboBox*>(w) || qobject_cast<const QLineEdit*>(w);
        if (!innen) eigene << teil;
    }
    return eigene;
}

QRect lage(const QWidget* teil, const QWidget* fenster) {
    return QRect(teil->mapTo(fenster, QPoint(0, 0)), teil->size());
}

bool passenDieWoerter(const QLabel* label) {
    static const QRegularExpression bruch(QStringLiteral("[\\s\\x{200B}]+"));
    for (const QString& wort : label->text().split(bruch))
        if (label->fontMetrics().horizontalAdvance(wort) > label->width()) return false;
    return true;
}

bool passtLabel(const QLabel* label) {
    const QSize noetig = label->sizeHint();
    if (label->wordWrap())
        return label->heightForWidth(label->width()) <= label->height() && passenDieWoerter(label);
    return noetig.width() <= label->width() && noetig.height() <= label->height();
}

bool passtSchieber(const QSlider* regler) {
    QStyleOptionSlider lage;
    lage.initFrom(regler);
    lage.orientation = regler->orientation();
    lage.tickPosition = regler->tickPosition();
    lage.minimum = regler->minimum();
    lage.maximum = regler->maximum();
    lage.sliderPosition = regler->sliderPosition();
    const QRect griff =
        regler->style()->subControlRect(QStyle::CC_Slider, &lage, QStyle::SC_SliderHandle, regler);
    return regler->rect().contains(griff);
}

bool passt(const QWidget* teil) {
    if (const auto* label = qobject_cast<const QLabel*>(teil)) return passtLabel(label);
    if (const auto* regler = qobject_cast<const QSlider*>(teil)) return passtSchieber(regler);
    const QSize noetig = teil->minimumSizeHint();
    if (qobject_cast<const QAbstractButton*>(teil))
        return teil->sizeHint().width() <= teil->width() && teil->sizeHint().height() <= teil->height();
    return noetig.width() <= teil->width() && noetig.height() <= teil->height();
}

// Two buttons with a common edge look like one.
bool beruehrt(const QWidget* a, const QWidget* b) {
    const bool knoepfe = qobject_cast<const QPushButton*>(a) && qobject_cast<const QPushButton*>(b);
    const int abstand = knoepfe ? 1 : 0;
    return a->geometry().adjusted(-abstand, -abstand, abstand, abstand).intersects(b->geometry());
}

QString kuerzelVon(const QString& text) {
    const QString ohnePaare = QString(text).remove(QStringLiteral("&&"));
    const qsizetype stelle = ohnePaare.indexOf(u'&');
    return stelle < 0 ? QString() : ohnePaare.mid(stelle + 1, 1).toUpper();
}

bool hatTab(const QWidget* teil) {
    return teil->isEnabled() && (teil->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

QStringList buddyTexte(QWidget* fenster, const QWidget* teil) {
    QStringList texte;
    for (const QLabel* label : fenster->findChildren<QLabel*>())
        if (label->buddy() == teil && !label->text().isEmpty()) texte << label->text();
    return texte;
}

QPalette dunklePalette() {
    QPalette farben;
    const QColor fenster(45, 45, 48), grund(30, 30, 32), text(230, 230, 230);
    farben.setColor(QPalette::Window, fenster);
    farben.setColor(QPalette::WindowText, text);
    farben.setColor(QPalette::Base, grund);
    farben.setColor(QPalette::AlternateBase, fenster);
    farben.setColor(QPalette::Text, text);
    farben.setColor(QPalette::Button, QColor(58, 58, 62));
    farben.setColor(QPalette::ButtonText, text);
    farben.setColor(QPalette::BrightText, Qt::white);
    farben.setColor(QPalette::ToolTipBase, fenster);
    farben.setColor(QPalette::ToolTipText, text);
    farben.setColor(QPalette::Highlight, QColor(61, 129, 196));
    farben.setColor(QPalette::HighlightedText, Qt::white);
    farben.setColor(QPalette::Link, QColor(120, 180, 240));
    farben.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    for (const auto rolle : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        farben.setColor(QPalette::Disabled, rolle, QColor(120, 120, 120));
    return farben;
}

}  // namespace

void NichtsAbgeschnitten(QWidget* fenster) {
    for (const QWidget* teil : teile(fenster)) {
        EXPECT_TRUE(passt(teil)) << qPrintable(wer(teil)) << " ist " << teil->width() << "x" << teil->height()
                                 << ", will " << teil->sizeHint().width() << "x" << teil->sizeHint().height();
        EXPECT_TRUE(fenster->rect().contains(lage(teil, fenster))) << qPrintable(wer(teil)) << " ragt hinaus";
    }
}

void NichtsUeberdeckt(QWidget* fenster) {
    const QList<QWidget*> alle = teile(fenster);
    for (const QWidget* a : alle)
        for (const QWidget* b : alle)
            if (a < b && a->parentWidget() == b->parentWidget()) {
                EXPECT_FALSE(beruehrt(a, b)) << qPrintable(wer(a)) << " und " << qPrintable(wer(b));
            }
}

void AllesHatEinenNamen(QWidget* fenster) {
    for (QWidget* teil : teile(fenster)) {
        if (teil->focusPolicy() == Qt::NoFocus || qobject_cast<QGroupBox*>(teil) ||
            qobject_cast<QStackedWidget*>(teil) || qobject_cast<QMenuBar*>(teil))
            continue;
        const auto* knopf = qobject_cast<const QAbstractButton*>(teil);
        const auto* label = qobject_cast<const QLabel*>(teil);
        EXPECT_TRUE(!teil->accessibleName().isEmpty() || (knopf && !knopf->text().trimmed().isEmpty()) ||
                    (label && !label->text().isEmpty()) || !buddyTexte(fenster, teil).isEmpty())
            << qPrintable(wer(teil));
    }
}

void KuerzelEindeutig(QWidget* fenster) {
    QMap<QString, QStringList> vergeben;
    for (const QAction* menue :
         fenster->findChild<QMenuBar*>() ? fenster->findChild<QMenuBar*>()->actions() : QList<QAction*>())
        vergeben[kuerzelVon(menue->text())] << menue->text();
    for (const QWidget* teil : teile(fenster)) {
        const auto* knopf = qobject_cast<const QAbstractButton*>(teil);
        const auto* label = qobject_cast<const QLabel*>(teil);
        if (knopf) vergeben[kuerzelVon(knopf->text())] << knopf->text();
        if (label && label->buddy()) vergeben[kuerzelVon(label->text())] << label->text();
    }
    vergeben.remove(QString());
    for (const QStringList& texte : std::as_const(vergeben))
        EXPECT_EQ(texte.size(), 1) << qPrintable(texte.join(QStringLiteral(" | ")));
}

// Every step goes to the right, down or inside.
void TabFolgtDemLesen(QWidget* fenster) {
    const QList<QWidget*> alle = teile(fenster);
    QList<QWidget*> folge;
    for (QWidget* w = fenster->nextInFocusChain(); w && w != fenster; w = w->nextInFocusChain())
        if (alle.contains(w) && hatTab(w)) folge << w;
    for (qsizetype i = 1; i < folge.size(); ++i) {
        const QRect a = lage(folge[i - 1], fenster), b = lage(folge[i], fenster);
        EXPECT_TRUE(b.top() > a.bottom() || b.left() > a.right() || a.contains(b))
            << qPrintable(wer(folge[i - 1])) << " vor " << qPrintable(wer(folge[i]));
    }
}

void AnsichtPruefen(QWidget* fenster, const QString& name) {
    SCOPED_TRACE(name.toStdString());
    QTest::qWait(0);
    NichtsAbgeschnitten(fenster);
    NichtsUeberdeckt(fenster);
    AllesHatEinenNamen(fenster);
    KuerzelEindeutig(fenster);
    TabFolgtDemLesen(fenster);
    const QString ordner = qEnvironmentVariable("LINDGARN_BILDER");
    if (ordner.isEmpty()) return;
    EXPECT_TRUE(fenster->grab().save(QDir(ordner).filePath(name + QStringLiteral(".png"))));
}

QString Ansichtsname(const Ansicht& ansicht) {
    return QStringLiteral("%1%2").arg(int(ansicht.schrift * 100)).arg(ansicht.dunkel ? u"Dunkel" : u"Hell");
}

void PrintTo(const Ansicht& ansicht, std::ostream* strom) {
    *strom << Ansichtsname(ansicht).toStdString();
}

MitAnsicht::MitAnsicht(const Ansicht& ansicht)
    : schrift_(QApplication::font()), farben_(QApplication::palette()) {
    QFont schrift = schrift_;
    schrift.setPointSizeF(schrift.pointSizeF() * ansicht.schrift);
    QApplication::setFont(schrift);
    if (ansicht.dunkel) QApplication::setPalette(dunklePalette());
}

MitAnsicht::~MitAnsicht() {
    QApplication::setFont(schrift_);
    QApplication::setPalette(farben_);
}
