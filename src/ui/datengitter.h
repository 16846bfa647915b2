// The grid of the review windows: shows a data control, read-only, by whole rows.
#pragma once

#include <QTableView>
#include <functional>

#include "ui/datensteuerung.h"

// The current row is the control's current record. A right click leaves it where it is.
class Datengitter : public QTableView {
  public:
    explicit Datengitter(QWidget* eltern = nullptr);

    // The control to show; it must outlive the grid.
    void setDataSource(Datensteuerung* daten);

    // Columns count from 0; widths are in twips, 1440 to the inch.
    void setColumnCaption(int spalte, const QString& text);
    void setColumnTwips(int spalte, int twips);
    // Runs the control's query anew. The current record stays the current one, or the next one takes its
    // place when it has gone; `nummer` is the field by whose numbers the records are ordered.
    void auffrischen(const QString& nummer);
    // Shows the control's current record; call after a refresh. Everything else stays in place.
    void aktuellenSatzZeigen();

    // A mouse button was released over the rows. The menu key and Shift+F10 count as the right one.
    std::function<void(Qt::MouseButton)> maus;
    std::function<void()> klick;            // the left one was, on a row
    std::function<void(int)> taste;         // a key was pressed, after the grid has acted on it
    std::function<void()> zeileGewechselt;  // the user chose another record

  protected:
    void currentChanged(const QModelIndex& neu, const QModelIndex& alt) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void contextMenuEvent(QContextMenuEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;

  private:
    Datensteuerung* daten_ = nullptr;
    int oben_ = 0;  // how far the rows were scrolled down before the refresh
};

// As long as one lives, the grids of a window do not paint: a query lets the window breathe, and meanwhile no
// row can be read.
class Malpause {
  public:
    explicit Malpause(const QWidget* fenster);
    ~Malpause();
    Malpause(const Malpause&) = delete;
    Malpause& operator=(const Malpause&) = delete;

  private:
    QList<QTableView*> angehalten_;
};

// Lets grids with the same columns go together: sideways and in the widths of their columns.
void GitterKoppeln(const QList<Datengitter*>& gitter);

// Widths for the columns from `ab` on, by their captions and the first rows of all `gitter`, within bounds.
void SpaltenbreitenSchaetzen(const QList<Datengitter*>& gitter, int ab);
