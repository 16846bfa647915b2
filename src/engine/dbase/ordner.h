// The files of the folder: which belong to a table.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace dbase {

// The names in a folder at one moment.
class Ordner {
  public:
    explicit Ordner(const QString& pfad);
    QString pfadVon(const QString& datei) const { return pfad_ + u'/' + datei; }

    // The names of the .dbf files, sorted without regard to case. Of several that differ in case only, the
    // first in byte order; the others are added to `doppelte`.
    QStringList tabellendateien(QStringList* doppelte = nullptr) const;
    // How many .dbf files have a name that is no text in the system's character set. They are in no list.
    int namenlose() const;
    // The file with this stem and extension (without the dot), in any case of letters, but not the companion
    // of a table that differs in case only; the one spelled as asked for comes first. Empty when there is
    // none.
    QString datei(const QString& stamm, const QString& endung) const;
    // The same, the content; empty when there is none or it cannot be read.
    QByteArray inhalt(const QString& stamm, const QString& endung) const;
    // "dbf" or "DBF", as most tables of the folder have it.
    QString ueblicheEndung() const;

    // Files that go with a table beside its .dbf: memo, code page, indexes. Those indexes of dBase III that
    // only this table's .inf file names are among them.
    QStringList begleiter(const QString& stamm) const;
    // The index files of dBase III that a table's .inf file names.
    QStringList genannteIndexe(const QString& stamm) const;

  private:
    QStringList schreibungen(const QString& name) const;
    bool gehoertAnderer(const QString& datei) const;

    QString pfad_;
    QStringList dateien_;
    QHash<QString, QStringList> nachName_;  // by the name without regard to case
};

// A file name without its extension, and the extension without the dot.
QString stammVon(const QString& datei);
QString endungVon(const QString& datei);
// True for the extensions of index files and their lists.
bool istIndexdatei(const QString& datei);
// `endung` in capitals when `vorbild` has capitals, else in small letters.
QString endungWie(const QString& vorbild, const QString& endung);

}  // namespace dbase
