// Small things that every window is built from.
#include "ui/bausteine.h"

namespace {

constexpr QChar kBruchstelle(0x200B);  // the blank of no width

}  // namespace

QString ElementName(const QString& feld, int index) {
    return QStringLiteral("%1_%2").arg(feld, QString::number(index));
}

QLabel* Textfeld(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel* Textfeld(const QString& text, const QString& name) {
    QLabel* label = Textfeld(text);
    label->setObjectName(name);
    return label;
}

QLabel* Beschriftung(const QString& text, QWidget* element) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(element);
    return label;
}

QComboBox* Auswahlliste(const QString& name, int zeichen) {
    auto* liste = Neu<QComboBox>(name);
    liste->setMinimumContentsLength(zeichen);
    liste->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return liste;
}

void PlatzBehalten(QWidget* element) {
    QSizePolicy platz = element->sizePolicy();
    platz.setRetainSizeWhenHidden(true);
    element->setSizePolicy(platz);
}

int PixelAusTwips(int twips, const QWidget* widget) {
    constexpr int kTwipsProZoll = 1440;
    return twips * widget->logicalDpiX() / kTwipsProZoll;
}

QString OhneKuerzel(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

QString AlsZeilen(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

QString MitBruchstellen(const QString& text, const QFontMetrics& schrift, int breite) {
    QString ergebnis;
    for (qsizetype anfang = 0; anfang < text.size();) {
        qsizetype ende = anfang;
        while (ende < text.size() && !text[ende].isSpace()) ++ende;
        const QString wort = text.mid(anfang, ende - anfang);
        const bool zuBreit = schrift.horizontalAdvance(wort) > breite;
        for (const QChar zeichen : wort) {
            ergebnis += zeichen;
            if (zuBreit && !zeichen.isHighSurrogate()) ergebnis += kBruchstelle;
        }
        for (anfang = ende; anfang < text.size() && text[anfang].isSpace(); ++anfang)
            ergebnis += text[anfang];
    }
    return ergebnis;
}

QString OhneBruchstellen(QString text) {
    return text.remove(kBruchstelle);
}

bool IstDunkel(const QPalette& farben) {
    return farben.color(QPalette::WindowText).lightness() > farben.color(QPalette::Window).lightness();
}

QColor Gemischt(const QColor& a, const QColor& b, qreal anteil) {
    const auto mischen = [anteil](qreal x, qreal y) { return float(x * (1 - anteil) + y * anteil); };
    return QColor::fromRgbF(mischen(a.redF(), b.redF()), mischen(a.greenF(), b.greenF()),
                            mischen(a.blueF(), b.blueF()));
}
