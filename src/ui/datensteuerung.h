// The data control: a query on the open database, its current record, and its rows for a grid.
#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "base/wert.h"
#include "engine/dao/recordset.h"

// Rows are read when they are looked at, and only the last few hundred are kept, so that a table of any size
// costs no more than what is on the screen. Positions count from 0; -1 is EOF.
class Datensteuerung : public QAbstractTableModel {
  public:
    // True for a cell that differs from the record of `vergleichen`.
    static constexpr int kAbweichung = Qt::UserRole;

    explicit Datensteuerung(QObject* eltern = nullptr);

    const QString& ConnectionString() const { return verbindung_; }
    // The text is kept as told; all controls work on `gDatenbank`.
    void setConnectionString(const QString& text) { verbindung_ = text; }
    const QString& RecordSource() const { return quelle_; }
    // The query of the next `Refresh`.
    void setRecordSource(const QString& text) { quelle_ = text; }
    // Runs the query; the first record becomes the current one. Raises what OpenRecordset raises, 3420
    // without an open database; the rows then stay as they were.
    void Refresh();
    // True as long as `Refresh` works, when views see their rows go and come.
    bool wirdErneuert() const { return wirdErneuert_; }

    // All are 0, EOF or none before the first `Refresh`.
    qint64 RecordCount() const { return zeilen_; }
    bool Eof() const { return position_ < 0; }
    int position() const { return position_; }
    void setPosition(int zeile);
    // A field of the current record. Raises 3021 at EOF and 3265 for an unknown name.
    Wert Fields(const QString& name) const;

    // Marks from now on what differs from the current record of `muster` in rows whose field `gruppe` is
    // equal. The fields named in `ausser` and the first column never count. At EOF of `muster` nothing is
    // marked.
    void vergleichen(const Datensteuerung& muster, const QString& gruppe, const QStringList& ausser);

    // The text of a field of any row, also of one that is not the current one; empty for an unknown name.
    QString text(int zeile, const QString& feld) const;
    // The first row whose field holds at least `nummer`, the last one if there is none, -1 without rows. The
    // rows must stand in the order of that field.
    int zeileAb(const QString& feld, qint64 nummer) const;

    // What the tool tip of a cell says below its value; nothing for no more than the value.
    std::function<QString(int zeile, int spalte)> erklaerung;

    int rowCount(const QModelIndex& eltern = {}) const override;
    int columnCount(const QModelIndex& eltern = {}) const override;
    QVariant data(const QModelIndex& index, int rolle = Qt::DisplayRole) const override;
    QVariant headerData(int abschnitt, Qt::Orientation richtung, int rolle) const override;
    // A column's caption until the next `Refresh`.
    bool setHeaderData(int abschnitt, Qt::Orientation richtung, const QVariant& wert,
                       int rolle = Qt::EditRole) override;

  private:
    void zeilenErsetzen(std::unique_ptr<dao::Recordset> neue, const QStringList& titel);
    const QStringList& texte(int zeile) const;
    bool weichtAb(int zeile, int spalte) const;
    QVariant hinweis(int zeile, int spalte) const;

    QString verbindung_;
    QString quelle_;
    std::unique_ptr<dao::Recordset> saetze_;
    QStringList titel_;
    std::vector<bool> zahlenspalte_;
    int zeilen_ = 0;
    int position_ = -1;
    bool wirdErneuert_ = false;
    mutable QStringList unlesbar_;             // what a row shows that could not be read
    mutable QCache<int, QStringList> puffer_;  // the texts of the rows looked at last

    QStringList muster_;  // the texts to compare with; empty for none
    int gruppenspalte_ = -1;
    std::vector<bool> zaehlt_;  // the columns that are compared
};
