// The grid of the review windows: shows a data control, read-only, by whole rows.
#include "ui/datengitter.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "ui/bausteine.h"

namespace {

// The highlight of a chosen row, away from the colour of its text.
QColor verstaerkt(const QPalette& palette) {
    constexpr int kProzent = 150;
    const QColor grund = palette.color(QPalette::Highlight);
    const bool hellerText = palette.color(QPalette::HighlightedText).lightness() > 127;
    return hellerText ? grund.darker(kProzent) : grund.lighter(kProzent);
}

// Cells that differ from the enriched record are bold, and tinted with the palette's own highlight.
class Abweichungsmaler : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        constexpr qreal kAnteil = 0.22;
        QStyledItemDelegate::initStyleOption(option, index);
        if (!index.data(Datensteuerung::kAbweichung).toBool()) return;
        option->font.setBold(true);
        option->backgroundBrush = Gemischt(option->palette.color(QPalette::Base),
                                           option->palette.color(QPalette::Highlight), kAnteil);
        option->palette.setColor(QPalette::Highlight, verstaerkt(option->palette));
    }
};

// A heading whose caption is too long for its column is written smaller, as far as it can be read, and ends
// in points where even that is too long.
class Kopfzeile : public QHeaderView {
  public:
    using QHeaderView::QHeaderView;

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* stil, int spalte) const override {
        QHeaderView::initStyleOptionForIndex(stil, spalte);
        stil->fontMetrics = QFontMetrics(schriftFuer(spalte));
        stil->text = stil->fontMetrics.elidedText(stil->text, Qt::ElideRight,
                                                  std::max(0, sectionSize(spalte) - kRand));
    }
    void paintSection(QPainter* maler, const QRect& rechteck, int spalte) const override {
        maler->save();
        maler->setFont(schriftFuer(spalte));
        QHeaderView::paintSection(maler, rechteck, spalte);
        maler->restore();
    }

  private:
    static constexpr int kRand = 8;

    QFont schriftFuer(int spalte) const {
        constexpr qreal kKleinste = 0.7;
        const QString text = model()->headerData(spalte, orientation()).toString();
        const int breite = fontMetrics().horizontalAdvance(text) + kRand;
        QFont schrift = font();
        if (breite > sectionSize(spalte))
            schrift.setPointSizeF(schrift.pointSizeF() *
                                  std::max(kKleinste, qreal(sectionSize(spalte)) / breite));
        return schrift;
    }
};

bool istMenuetaste(const QKeyEvent& ereignis) {
    return ereignis.key() == Qt::Key_Menu ||
           (ereignis.key() == Qt::Key_F10 && ereignis.modifiers() == Qt::ShiftModifier);
}

void seitwaertsKoppeln(Datengitter* von, Datengitter* nach) {
    QObject::connect(von->horizontalScrollBar(), &QScrollBar::valueChanged, nach->horizontalScrollBar(),
                     &QScrollBar::setValue);
    QObject::connect(von->horizontalHeader(), &QHeaderView::sectionResized, nach,
                     [nach](int spalte, int, int breite) {
                         // A hidden column counts as resized to nothing.
                         if (breite > 0 && !nach->isColumnHidden(spalte))
                             nach->setColumnWidth(spalte, breite);
                     });
}

int breiteNachInhalt(const Datengitter& gitter, int spalte) {
    constexpr int kProben = 50;
    const QAbstractItemModel& daten = *gitter.model();
    QFont fett = gitter.font();
    fett.setBold(true);
    const QFontMetrics metrik(fett);
    int breite = metrik.horizontalAdvance(daten.headerData(spalte, Qt::Horizontal).toString());
    for (int zeile = 0; zeile < std::min(kProben, daten.rowCount()); ++zeile)
        breite = std::max(breite, metrik.horizontalAdvance(daten.index(zeile, spalte).data().toString()));
    return breite + 2 * metrik.averageCharWidth();
}

}  // namespace

Datengitter::Datengitter(QWidget* eltern) : QTableView(eltern) {
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setItemDelegate(new Abweichungsmaler(this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    setHorizontalHeader(new Kopfzeile(Qt::Horizontal, this));
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
}

void Datengitter::setDataSource(Datensteuerung* daten) {
    daten_ = daten;
    setModel(daten);
}

void Datengitter::setColumnCaption(int spalte, const QString& text) {
    model()->setHeaderData(spalte, Qt::Horizontal, text);
}

void Datengitter::setColumnTwips(int spalte, int twips) {
    setColumnWidth(spalte, PixelAusTwips(twips, this));
}

void Datengitter::auffrischen(const QString& nummer) {
    const bool leer = daten_->Eof();
    const qint64 satz = leer ? 0 : qint64(daten_->Fields(nummer).alsZahl());
    oben_ = verticalScrollBar()->value();
    daten_->Refresh();
    if (!leer) daten_->setPosition(daten_->zeileAb(nummer, satz));
}

void Datengitter::aktuellenSatzZeigen() {
    const int seitwaerts = horizontalScrollBar()->value();
    const QModelIndex satz = model()->index(daten_->position(), std::max(0, currentIndex().column()));
    setCurrentIndex(satz);
    verticalScrollBar()->setValue(oben_);
    if (satz.isValid()) scrollTo(satz);
    horizontalScrollBar()->setValue(seitwaerts);
}

void Datengitter::currentChanged(const QModelIndex& neu, const QModelIndex& alt) {
    QTableView::currentChanged(neu, alt);
    if (!daten_ || daten_->wirdErneuert() || !neu.isValid() || neu.row() == daten_->position()) return;
    daten_->setPosition(neu.row());
    if (zeileGewechselt) zeileGewechselt();
}

void Datengitter::mousePressEvent(QMouseEvent* ereignis) {
    if (ereignis->button() == Qt::LeftButton) QTableView::mousePressEvent(ereignis);
}

// The second press of two quick ones.
void Datengitter::mouseDoubleClickEvent(QMouseEvent* ereignis) {
    mousePressEvent(ereignis);
}

void Datengitter::mouseReleaseEvent(QMouseEvent* ereignis) {
    const QPoint stelle = ereignis->position().toPoint();
    const Qt::MouseButton knopf = ereignis->button();
    if (knopf == Qt::LeftButton) QTableView::mouseReleaseEvent(ereignis);
    if (!viewport()->rect().contains(stelle)) return;
    if (knopf == Qt::LeftButton && klick && indexAt(stelle).isValid()) klick();
    if (maus) maus(knopf);
}

// The keys that ask for it have acted already.
void Datengitter::contextMenuEvent(QContextMenuEvent* ereignis) {
    ereignis->accept();
}

void Datengitter::keyPressEvent(QKeyEvent* ereignis) {
    if (istMenuetaste(*ereignis)) {
        ereignis->accept();
        if (maus && !ereignis->isAutoRepeat()) maus(Qt::RightButton);
        return;
    }
    const int code = ereignis->key();
    QTableView::keyPressEvent(ereignis);
    if (taste) taste(code);
}

Malpause::Malpause(const QWidget* fenster) {
    for (QTableView* gitter : fenster->findChildren<QTableView*>())
        if (gitter->updatesEnabled()) angehalten_ << gitter;
    for (QTableView* gitter : angehalten_) gitter->setUpdatesEnabled(false);
}

Malpause::~Malpause() {
    for (QTableView* gitter : angehalten_) gitter->setUpdatesEnabled(true);
}

void GitterKoppeln(const QList<Datengitter*>& gitter) {
    for (Datengitter* von : gitter)
        for (Datengitter* nach : gitter)
            if (von != nach) seitwaertsKoppeln(von, nach);
    // The bar takes the same room in each, so that the same columns stand below each other.
    for (Datengitter* jedes : gitter) jedes->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void SpaltenbreitenSchaetzen(const QList<Datengitter*>& gitter, int ab) {
    if (gitter.isEmpty()) return;
    constexpr int kWenigsteZeichen = 5;
    constexpr int kMeisteZeichen = 32;
    const int zeichen = gitter.constFirst()->fontMetrics().averageCharWidth();
    for (int spalte = ab; spalte < gitter.constFirst()->model()->columnCount(); ++spalte) {
        int breite = 0;
        for (const Datengitter* jedes : gitter) breite = std::max(breite, breiteNachInhalt(*jedes, spalte));
        breite = std::clamp(breite, kWenigsteZeichen * zeichen, kMeisteZeichen * zeichen);
        for (Datengitter* jedes : gitter)
            if (!jedes->isColumnHidden(spalte)) jedes->setColumnWidth(spalte, breite);
    }
}
