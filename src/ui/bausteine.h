// Small things that every window is built from: named controls, wrapped texts, lengths in twips.
#pragma once

#include <QColor>
#include <QComboBox>
#include <QLabel>
#include <QString>
#include <QWidget>

// A new control with its object name; the layout that takes it in owns it.
template <typename Steuerelement, typename... Argumente>
Steuerelement* Neu(const QString& name, Argumente&&... argumente) {
    auto* element = new Steuerelement(std::forward<Argumente>(argumente)...);
    element->setObjectName(name);
    return element;
}

// "cbxSuchFeld", 3 gives "cbxSuchFeld_3".
QString ElementName(const QString& feld, int index);

// A label that shows its text as it stands and wraps it.
QLabel* Textfeld(const QString& text);
QLabel* Textfeld(const QString& text, const QString& name);
// A label in front of its control; an "&" in the text is the key that leads there.
QLabel* Beschriftung(const QString& text, QWidget* element);

// A list of names to choose from, wide enough for some characters whatever it holds.
QComboBox* Auswahlliste(const QString& name, int zeichen);

// The element keeps its place while it is hidden, so that nothing jumps.
void PlatzBehalten(QWidget* element);

// 1440 twips are an inch, which is as many pixels as the screen of `widget` says.
int PixelAusTwips(int twips, const QWidget* widget);

// A text for a place where "&" would mark a key: as it stands.
QString OhneKuerzel(QString text);

// The text with its lines as the toolkit ends them: a carriage return alone, or with a line feed, is one end.
QString AlsZeilen(QString text);

// The text with places to break, which show nothing, in every word that is wider than `breite` pixels: a
// label breaks nowhere else. And the text without them.
QString MitBruchstellen(const QString& text, const QFontMetrics& schrift, int breite);
QString OhneBruchstellen(QString text);

// True on a desktop with light text on dark ground.
bool IstDunkel(const QPalette& farben);
// Between two colours: `anteil` 0 is the first, 1 the second one.
QColor Gemischt(const QColor& a, const QColor& b, qreal anteil);
