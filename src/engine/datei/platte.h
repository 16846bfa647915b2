// Small steps on the file system that the swaps of files are made of, and what their failures are called.
#pragma once

#include <QString>

namespace engine {

// A file descriptor that closes itself.
class Griff {
  public:
    explicit Griff(int fd = -1) : fd_(fd) {}
    Griff(Griff&& anderer) noexcept : fd_(anderer.fd_) { anderer.fd_ = -1; }
    ~Griff();
    Griff(const Griff&) = delete;
    Griff& operator=(const Griff&) = delete;
    Griff& operator=(Griff&&) = delete;
    int operator*() const { return fd_; }
    bool offen() const { return fd_ >= 0; }

  private:
    int fd_;
};

// A temporary file, removed at the end unless it was kept.
class Beiname {
  public:
    Beiname() = default;
    explicit Beiname(QString pfad) : pfad_(std::move(pfad)) {}
    Beiname(Beiname&& anderer) noexcept : pfad_(std::move(anderer.pfad_)) { anderer.pfad_.clear(); }
    Beiname& operator=(Beiname&& anderer) noexcept;
    ~Beiname();
    Beiname(const Beiname&) = delete;
    Beiname& operator=(const Beiname&) = delete;
    const QString& pfad() const { return pfad_; }
    void behalten() { pfad_.clear(); }

  private:
    QString pfad_;
};

// Raises what the system's last error number means for the user: kDatentraegerVoll, kSchreibgeschuetzt or
// kDateifehler. `was` fits "kann nicht ... werden".
[[noreturn]] void systemfehler(const QString& pfad, const QString& was);

// Raises kDateifehler for what is no regular file: a folder, a pipe, a device.
[[noreturn]] void keineDatei(const QString& pfad);

// Opens a regular file for reading or raises as `systemfehler` and `keineDatei`.
Griff zumLesenOeffnen(const QString& pfad);

// The file that a symbolic link in the end leads to; the path itself when it leads nowhere.
QString zielVon(const QString& pfad);

// What the private names of a file begin with: its name, of a very long one a part, and a mark.
QString beinamenanfang(const QString& name);

// A new, empty file beside `ziel`, under a private name that no program takes for data. With a file as
// `vorbild` it gets that one's mode, owner and group, else those of any new file.
Beiname leereDateiDaneben(const QString& ziel, const QString& vorbild = QString());

// The same as a byte copy of `vorbild`.
Beiname kopieDaneben(const QString& ziel, const QString& vorbild);

// A private name beside `ziel` that no file has at the moment, for the old content while it may still be
// needed.
QString nameFuerAltes(const QString& ziel);

// Writes all of it or raises as `systemfehler`, naming `pfad`.
void ganzSchreiben(int fd, const char* daten, qint64 anzahl, const QString& pfad);

// Waits until the file's content is on the disk.
void aufPlatteBringen(const QString& pfad);
// The same for the names in a file's folder; a folder that cannot be flushed is no failure.
void ordnerAufPlatteBringen(const QString& pfad);

}  // namespace engine
