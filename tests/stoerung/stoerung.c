// Lets one chosen file operation of a process fail, as a full or broken disk would: loaded in front of libc.
//
// Counted are the operations on files below the folder LINDGARN_STOERUNG_ORDNER and on the scratch files of SQLite.
// The file LINDGARN_STOERUNG is a page shared with the test, which switches the counting on and chooses the
// operation that fails. Removing a file never fails, so that a test can ask for a clean folder.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

enum { kGriffe = 4096, kSeite = 4096 };

// The shared page; stoerung.py knows its layout.
struct Steuerung {
    volatile uint32_t an;
    volatile uint32_t anzahl;
    volatile uint32_t fehlerBei;    // number of the operation that fails; 0 = none
    volatile uint32_t dauer;        // how many operations in a row fail, counted ones only
    volatile uint32_t ausgeloest;
    volatile uint32_t umbenannt;    // number of the last renaming
    char letzte[256];               // the operation that failed last
};

static struct Steuerung* steuerung;
static const char* ordner;
static unsigned char gemerkt[kGriffe];

__attribute__((constructor)) static void einrichten(void) {
    const char* datei = getenv("LINDGARN_STOERUNG");
    ordner = getenv("LINDGARN_STOERUNG_ORDNER");
    if (!datei || !ordner) return;
    const int fd = open(datei, O_RDWR | O_CLOEXEC);
    if (fd < 0) return;
    void* seite = mmap(NULL, kSeite, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    if (seite != MAP_FAILED) steuerung = seite;
}

static int unser(const char* pfad) {
    return steuerung && pfad && (strncmp(pfad, ordner, strlen(ordner)) == 0 || strstr(pfad, "/etilqs_"));
}

static int griffUnser(int fd) {
    return steuerung && fd >= 0 && fd < kGriffe && gemerkt[fd];
}

// True when this operation is the one that fails; errno is set then.
static int scheitert(const char* was, const char* pfad, int fehler) {
    if (!steuerung->an) return 0;
    const uint32_t nummer = ++steuerung->anzahl;
    const uint32_t ab = steuerung->fehlerBei;
    if (ab == 0 || nummer < ab || nummer >= ab + (steuerung->dauer ? steuerung->dauer : 1)) return 0;
    steuerung->ausgeloest++;
    snprintf(steuerung->letzte, sizeof steuerung->letzte, "%s %s", was, pfad);
    errno = fehler;
    return 1;
}

static int umbenennenScheitert(const char* nach) {
    const int jetzt = scheitert("rename", nach, EACCES);
    steuerung->umbenannt = steuerung->anzahl;
    return jetzt;
}

#define ECHT(name) \
    static __typeof__(&name) echt; \
    if (!echt) echt = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

static int geoeffnet(int fd, const char* pfad) {
    if (fd >= 0 && fd < kGriffe) gemerkt[fd] = (unsigned char)unser(pfad);
    return fd;
}

#define OEFFNEN(name) \
    int name(const char* pfad, int schalter, ...) { \
        ECHT(name); \
        va_list ap; \
        va_start(ap, schalter); \
        const mode_t modus = schalter & (O_CREAT | O_TMPFILE) ? va_arg(ap, mode_t) : 0; \
        va_end(ap); \
        if (unser(pfad) && scheitert("open", pfad, EACCES)) return -1; \
        return geoeffnet(echt(pfad, schalter, modus), pfad); \
    }
OEFFNEN(open)
OEFFNEN(open64)

#define OEFFNEN_IN(name) \
    int name(int in, const char* pfad, int schalter, ...) { \
        ECHT(name); \
        va_list ap; \
        va_start(ap, schalter); \
        const mode_t modus = schalter & (O_CREAT | O_TMPFILE) ? va_arg(ap, mode_t) : 0; \
        va_end(ap); \
        if (unser(pfad) && scheitert("open", pfad, EACCES)) return -1; \
        return geoeffnet(echt(in, pfad, schalter, modus), pfad); \
    }
OEFFNEN_IN(openat)
OEFFNEN_IN(openat64)

int close(int fd) {
    ECHT(close);
    if (fd >= 0 && fd < kGriffe) gemerkt[fd] = 0;
    return echt(fd);
}

ssize_t write(int fd, const void* daten, size_t anzahl) {
    ECHT(write);
    return griffUnser(fd) && scheitert("write", "", ENOSPC) ? -1 : echt(fd, daten, anzahl);
}

ssize_t pwrite(int fd, const void* daten, size_t anzahl, off_t ab) {
    ECHT(pwrite);
    return griffUnser(fd) && scheitert("pwrite", "", ENOSPC) ? -1 : echt(fd, daten, anzahl, ab);
}

ssize_t pwrite64(int fd, const void* daten, size_t anzahl, off64_t ab) {
    ECHT(pwrite64);
    return griffUnser(fd) && scheitert("pwrite", "", ENOSPC) ? -1 : echt(fd, daten, anzahl, ab);
}

ssize_t read(int fd, void* ziel, size_t anzahl) {
    ECHT(read);
    return griffUnser(fd) && scheitert("read", "", EIO) ? -1 : echt(fd, ziel, anzahl);
}

ssize_t pread(int fd, void* ziel, size_t anzahl, off_t ab) {
    ECHT(pread);
    return griffUnser(fd) && scheitert("pread", "", EIO) ? -1 : echt(fd, ziel, anzahl, ab);
}

ssize_t pread64(int fd, void* ziel, size_t anzahl, off64_t ab) {
    ECHT(pread64);
    return griffUnser(fd) && scheitert("pread", "", EIO) ? -1 : echt(fd, ziel, anzahl, ab);
}

int fsync(int fd) {
    ECHT(fsync);
    return griffUnser(fd) && scheitert("fsync", "", EIO) ? -1 : echt(fd);
}

int fdatasync(int fd) {
    ECHT(fdatasync);
    return griffUnser(fd) && scheitert("fdatasync", "", EIO) ? -1 : echt(fd);
}

int ftruncate(int fd, off_t laenge) {
    ECHT(ftruncate);
    return griffUnser(fd) && scheitert("ftruncate", "", EIO) ? -1 : echt(fd, laenge);
}

int ftruncate64(int fd, off64_t laenge) {
    ECHT(ftruncate64);
    return griffUnser(fd) && scheitert("ftruncate", "", EIO) ? -1 : echt(fd, laenge);
}

int rename(const char* von, const char* nach) {
    ECHT(rename);
    return unser(nach) && umbenennenScheitert(nach) ? -1 : echt(von, nach);
}

int renameat2(int in, const char* von, int nachIn, const char* nach, unsigned schalter) {
    ECHT(renameat2);
    return unser(nach) && umbenennenScheitert(nach) ? -1 : echt(in, von, nachIn, nach, schalter);
}

int link(const char* von, const char* nach) {
    ECHT(link);
    return unser(nach) && scheitert("link", nach, EPERM) ? -1 : echt(von, nach);
}
