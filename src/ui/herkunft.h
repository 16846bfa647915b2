// Where a value of an enriched record came from.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One member of a group: how it is called, and what it has in the field in question.
struct Mitgliedswert {
    QString name;
    QString wert;
};

// In words; nothing for an empty value. A value that no member has as a whole was put together from parts.
QString HerkunftText(const QString& wert, const QList<Mitgliedswert>& mitglieder);

// The members of the group last asked for, read from `gZielTabelle`.
class Gruppenmitglieder {
  public:
    // Where `wert` in column `spalte` of the grids (0 is the remark) came from in the group `gruppe`, a
    // TEMP_BN as plain digits. Raises what OpenRecordset raises.
    QString herkunft(const QString& gruppe, int spalte, const QString& wert);
    // After a record has moved.
    void vergessen() { gruppe_.clear(); }

  private:
    void lesen(const QString& gruppe);
    void anfuegen(const QString& abfrage, bool uebernommen);

    struct Mitglied {
        QString name;
        QStringList werte;  // by column of the grids
    };
    QString gruppe_;
    QList<Mitglied> mitglieder_;
};
