// The data control: a query on the open database, its current record, and its rows for a grid.
#include "ui/datensteuerung.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/typen.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

constexpr int kPufferZeilen = 512;
constexpr int kHinweisZeichen = 1000;

bool istZahlentyp(int typ) {
    switch (typ) {
        case dao::dbByte:
        case dao::dbInteger:
        case dao::dbLong:
        case dao::dbCurrency:
        case dao::dbSingle:
        case dao::dbDouble:
        case dao::dbBigInt:
        case dao::dbDecimal:
            return true;
        default:
            return false;
    }
}

QString alsAbsatz(const QString& text) {
    if (text.isEmpty()) return QString();
    return QStringLiteral("<p>%1</p>")
        .arg(text.left(kHinweisZeichen).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
}

}  // namespace

Datensteuerung::Datensteuerung(QObject* eltern) : QAbstractTableModel(eltern), puffer_(kPufferZeilen) {}

void Datensteuerung::Refresh() {
    std::unique_ptr<dao::Recordset> neue = Gesetzt(gDatenbank).OpenRecordset(quelle_);
    QStringList titel;
    for (int i = 0; i < neue->FieldsCount(); ++i) titel.append(neue->Fields(i).Name());
    wirdErneuert_ = true;
    zeilenErsetzen(std::move(neue), titel);
    wirdErneuert_ = false;
}

// Views keep the widths of their columns as long as the columns stay.
void Datensteuerung::zeilenErsetzen(std::unique_ptr<dao::Recordset> neue, const QStringList& titel) {
    const bool andereSpalten = titel.size() != titel_.size();
    if (andereSpalten)
        beginResetModel();
    else if (zeilen_ > 0)
        beginRemoveRows({}, 0, zeilen_ - 1);
    const bool zeilenFort = zeilen_ > 0;
    zeilen_ = 0;
    position_ = -1;
    puffer_.clear();
    saetze_ = std::move(neue);
    if (!andereSpalten && zeilenFort) endRemoveRows();

    zahlenspalte_.clear();
    for (int i = 0; i < int(titel.size()); ++i)
        zahlenspalte_.push_back(istZahlentyp(saetze_->Fields(i).Type()));
    titel_ = titel;
    const int anzahl = int(saetze_->RecordCount());
    if (!andereSpalten && anzahl > 0) beginInsertRows({}, 0, anzahl - 1);
    zeilen_ = anzahl;
    position_ = anzahl > 0 ? 0 : -1;
    if (andereSpalten)
        endResetModel();
    else if (anzahl > 0)
        endInsertRows();
}

void Datensteuerung::setPosition(int zeile) {
    position_ = zeile >= 0 && zeile < zeilen_ ? zeile : -1;
}

Wert Datensteuerung::Fields(const QString& name) const {
    if (Eof()) throw EngineFehler(kKeinDatensatz, QStringLiteral("Kein aktueller Datensatz."));
    saetze_->MoveFirst();
    saetze_->Move(position_);
    return saetze_->Fields(name).Value();
}

void Datensteuerung::vergleichen(const Datensteuerung& muster, const QString& gruppe,
                                 const QStringList& ausser) {
    muster_ = muster.Eof() ? QStringList() : muster.texte(muster.position_);
    gruppenspalte_ = int(titel_.lastIndexOf(gruppe));
    zaehlt_.clear();
    for (const QString& titel : titel_) zaehlt_.push_back(!ausser.contains(titel));
    if (!zaehlt_.empty()) zaehlt_[0] = false;
    if (zeilen_ > 0) Q_EMIT dataChanged(index(0, 0), index(zeilen_ - 1, int(titel_.size()) - 1));
}

QString Datensteuerung::text(int zeile, const QString& feld) const {
    return texte(zeile).value(titel_.lastIndexOf(feld));
}

int Datensteuerung::zeileAb(const QString& feld, qint64 nummer) const {
    int von = 0, bis = zeilen_;
    while (von < bis) {
        const int mitte = von + (bis - von) / 2;
        if (text(mitte, feld).toLongLong() < nummer)
            von = mitte + 1;
        else
            bis = mitte;
    }
    return std::min(von, zeilen_ - 1);
}

int Datensteuerung::rowCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : zeilen_;
}

int Datensteuerung::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : int(titel_.size());
}

// A record that cannot be read shows so in its cells: a view that paints has nobody to tell.
const QStringList& Datensteuerung::texte(int zeile) const {
    if (const QStringList* bekannt = puffer_.object(zeile)) return *bekannt;
    auto neu = std::make_unique<QStringList>();
    try {
        saetze_->MoveFirst();
        saetze_->Move(zeile);
        for (int i = 0; i < int(titel_.size()); ++i) neu->append(saetze_->Fields(i).Value().alsText());
    } catch (const EngineFehler&) {
        // Next time it may be there again.
        unlesbar_ = QStringList(titel_.size(), QStringLiteral("#Fehler"));
        return unlesbar_;
    }
    puffer_.insert(zeile, neu.release());
    return *puffer_.object(zeile);
}

bool Datensteuerung::weichtAb(int zeile, int spalte) const {
    if (muster_.size() != titel_.size() || gruppenspalte_ < 0 || !zaehlt_[size_t(spalte)]) return false;
    const QStringList& eigene = texte(zeile);
    return eigene[gruppenspalte_] == muster_[gruppenspalte_] && eigene[spalte] != muster_[spalte];
}

// The whole text, since the cell may be too narrow for it, and what the enriched record has to do with it.
QVariant Datensteuerung::hinweis(int zeile, int spalte) const {
    QString text = alsAbsatz(texte(zeile)[spalte]);
    if (weichtAb(zeile, spalte)) text += alsAbsatz(QStringLiteral("Angereichert: „%1“").arg(muster_[spalte]));
    if (erklaerung) text += alsAbsatz(erklaerung(zeile, spalte));
    return text.isEmpty() ? QVariant() : text;
}

QVariant Datensteuerung::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid()) return {};
    switch (rolle) {
        case Qt::DisplayRole:
            return texte(index.row())[index.column()];
        case Qt::ToolTipRole:
            return hinweis(index.row(), index.column());
        case Qt::TextAlignmentRole:
            return int(Qt::AlignVCenter |
                       (zahlenspalte_[size_t(index.column())] ? Qt::AlignRight : Qt::AlignLeft));
        case kAbweichung:
            return weichtAb(index.row(), index.column());
        default:
            return {};
    }
}

QVariant Datensteuerung::headerData(int abschnitt, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal || abschnitt < 0 || abschnitt >= int(titel_.size())) return {};
    if (rolle == Qt::DisplayRole || rolle == Qt::ToolTipRole) return titel_[abschnitt];
    if (rolle == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

bool Datensteuerung::setHeaderData(int abschnitt, Qt::Orientation richtung, const QVariant& wert, int rolle) {
    if (richtung != Qt::Horizontal || rolle != Qt::EditRole || abschnitt < 0 ||
        abschnitt >= int(titel_.size()))
        return false;
    titel_[abschnitt] = wert.toString();
    Q_EMIT headerDataChanged(richtung, abschnitt, abschnitt);
    return true;
}
