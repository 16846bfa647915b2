// The way back from a change of several files that a crash interrupted, kept on the disk while the change
// goes on.
#pragma once

#include <QString>
#include <vector>

namespace engine {

// One file of the change, by names in the folder without a path.
struct Buchung {
    QString ziel;
    // Where the old content is kept meanwhile; empty when there was no such file before.
    QString alt;
    // The new file's identity (inode); 0 when the file is removed. A file that came from elsewhere is not
    // touched.
    quint64 knoten = 0;
};

// While a book lies in a folder its change counts as not done. All names belong to one folder.
class Vorgangsbuch {
  public:
    // Writes the book and brings it to the disk. Raises as `systemfehler`; kDateifehler also when a book of
    // an earlier change lies there, which is never written over.
    Vorgangsbuch(const QString& ordner, const std::vector<Buchung>& buchungen);
    Vorgangsbuch(const Vorgangsbuch&) = delete;
    Vorgangsbuch& operator=(const Vorgangsbuch&) = delete;

    // The change is done: from here on a crash leaves the new files. Raises kDateifehler when the book cannot
    // be taken away.
    void abschliessen();

    // Takes the book away because the running program has gone the way back itself.
    void verwerfen();

  private:
    QString pfad_;
};

// Clears what crashed programs left in a folder: undoes changes whose book is there, then removes the copies
// under private names. Only what belongs to programs of this computer that run no more is touched. Never
// raises; what cannot be cleared now stays for the next time.
void ueberbleibselRaeumen(const QString& ordner);

}  // namespace engine
