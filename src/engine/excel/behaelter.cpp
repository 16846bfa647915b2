// Compound files, by libgsf.
#include "engine/excel/behaelter.h"

#include <gsf/gsf.h>

#include <algorithm>
#include <memory>

#include "base/fehler.h"
#include "engine/excel/verzeichnis.h"

namespace excel {
namespace {

constexpr int kKlasse = 16;
constexpr int kMaxTiefe = 32;

// What the library writes to the log while one of these lives is counted instead of shown: it leaves damaged
// entries out with a message and no error. Some of its messages name no domain.
class Mithoeren {
  public:
    Mithoeren() {
        for (size_t i = 0; i < std::size(kBereiche); ++i)
            griffe_[i] = g_log_set_handler(
                kBereiche[i], GLogLevelFlags(G_LOG_LEVEL_MASK | G_LOG_FLAG_RECURSION), zaehlen, &anzahl_);
    }
    ~Mithoeren() {
        for (size_t i = 0; i < std::size(kBereiche); ++i) g_log_remove_handler(kBereiche[i], griffe_[i]);
    }
    Mithoeren(const Mithoeren&) = delete;
    Mithoeren& operator=(const Mithoeren&) = delete;
    int anzahl() const { return anzahl_; }

  private:
    static void zaehlen(const gchar*, GLogLevelFlags, const gchar*, gpointer anzahl) {
        ++*static_cast<int*>(anzahl);
    }
    static constexpr const char* kBereiche[] = {"libgsf:msole", "libgsf", nullptr};
    guint griffe_[std::size(kBereiche)] = {};
    int anzahl_ = 0;
};

struct Loslassen {
    void operator()(void* objekt) const {
        if (objekt) g_object_unref(objekt);
    }
};
template <typename T>
using Griff = std::unique_ptr<T, Loslassen>;

void initialisieren() {
    static const bool einmal = (gsf_init(), true);
    Q_UNUSED(einmal);
}

QByteArray klasseVon(GsfInfile* speicher) {
    QByteArray klasse(kKlasse, '\0');
    gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(speicher), reinterpret_cast<guint8*>(klasse.data()));
    return klasse;
}

[[noreturn]] void unlesbar() {
    throw EngineFehler(kBeschaedigt,
                       QStringLiteral("Die Datei ist beschädigt. Öffnen Sie sie in Excel, und speichern "
                                      "Sie sie dort unter einem neuen Namen."));
}

QByteArray stromLesen(GsfInput* strom, qsizetype dateigroesse) {
    const gsf_off_t groesse = gsf_input_size(strom);
    if (groesse < 0 || groesse > dateigroesse) unlesbar();
    QByteArray bytes(qsizetype(groesse), Qt::Uninitialized);
    if (groesse > 0 && !gsf_input_read(strom, size_t(groesse), reinterpret_cast<guint8*>(bytes.data())))
        unlesbar();
    return bytes;
}

class Leser {
  public:
    Leser(std::vector<Behaeltereintrag>& ziel, qsizetype dateigroesse)
        : ziel_(ziel), dateigroesse_(dateigroesse) {}
    void speicherLesen(GsfInfile* speicher, const QByteArray& pfad, int tiefe) {
        if (tiefe > kMaxTiefe) unlesbar();
        const int anzahl = gsf_infile_num_children(speicher);
        for (int i = 0; i < anzahl; ++i) {
            const Griff<GsfInput> kind(gsf_infile_child_by_index(speicher, i));
            const char* name = gsf_infile_name_by_index(speicher, i);
            if (!kind || !name) unlesbar();
            eintragLesen(kind.get(), pfad + name + '\0', tiefe);
        }
    }

  private:
    void eintragLesen(GsfInput* kind, const QByteArray& pfad, int tiefe) {
        Behaeltereintrag eintrag{pfad, false, {}, {}};
        // A storage is told from a stream by having a number of children, 0 included.
        eintrag.speicher = GSF_IS_INFILE(kind) && gsf_infile_num_children(GSF_INFILE(kind)) >= 0;
        if (eintrag.speicher)
            eintrag.klasse = klasseVon(GSF_INFILE(kind));
        else
            eintrag.bytes = stromLesen(kind, dateigroesse_);
        // Streams that share sectors could otherwise grow without end.
        gesamt_ += eintrag.bytes.size();
        if (gesamt_ > dateigroesse_) unlesbar();
        ziel_.push_back(eintrag);
        if (eintrag.speicher) speicherLesen(GSF_INFILE(kind), pfad, tiefe + 1);
    }

    std::vector<Behaeltereintrag>& ziel_;
    qsizetype dateigroesse_;
    qsizetype gesamt_ = 0;
};

[[noreturn]] void nichtGeschrieben() {
    throw EngineFehler(kDateifehler, QStringLiteral("Die Arbeitsmappe kann nicht neu geschrieben werden."));
}

void klasseSetzen(GsfOutfile* speicher, const QByteArray& klasse) {
    if (klasse.size() == kKlasse)
        gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(speicher),
                                       reinterpret_cast<const guint8*>(klasse.constData()));
}

// Writes the entries from `i` on that lie in the storage `pfad`.
void speicherSchreiben(GsfOutfile* speicher, const QByteArray& pfad,
                       const std::vector<Behaeltereintrag>& eintraege, size_t& i) {
    while (i < eintraege.size() && eintraege[i].pfad.startsWith(pfad)) {
        const Behaeltereintrag& e = eintraege[i++];
        const QByteArray name = e.pfad.sliced(pfad.size()).chopped(1);
        const Griff<GsfOutput> kind(gsf_outfile_new_child(speicher, name.constData(), e.speicher));
        if (!kind) nichtGeschrieben();
        if (e.speicher) {
            klasseSetzen(GSF_OUTFILE(kind.get()), e.klasse);
            speicherSchreiben(GSF_OUTFILE(kind.get()), e.pfad, eintraege, i);
        } else if (!gsf_output_write(kind.get(), size_t(e.bytes.size()),
                                     reinterpret_cast<const guint8*>(e.bytes.constData()))) {
            nichtGeschrieben();
        }
        if (!gsf_output_close(kind.get())) nichtGeschrieben();
    }
}

}  // namespace

bool Behaeltereintrag::heisst(QByteArrayView name) const {
    return !speicher && pfad.size() == name.size() + 1 &&
           QByteArrayView(pfad).first(name.size()).compare(name, Qt::CaseInsensitive) == 0;
}

Behaelter::Behaelter(const QByteArray& datei) {
    initialisieren();
    const Mithoeren log;
    const Griff<GsfInput> eingabe(
        gsf_input_memory_new(reinterpret_cast<const guint8*>(datei.constData()), datei.size(), FALSE));
    GError* fehler = nullptr;
    const Griff<GsfInfile> wurzel(gsf_infile_msole_new(eingabe.get(), &fehler));
    g_clear_error(&fehler);
    if (!wurzel) unlesbar();
    wurzelklasse_ = klasseVon(wurzel.get());
    Leser(eintraege_, datei.size()).speicherLesen(wurzel.get(), {}, 0);
    vollstaendig_ = log.anzahl() == 0 && verzeichniseintraege(datei) == int(eintraege_.size());
}

const Behaeltereintrag* Behaelter::strom(QByteArrayView name) const {
    const auto fund = std::find_if(eintraege_.begin(), eintraege_.end(),
                                   [&](const Behaeltereintrag& e) { return e.heisst(name); });
    return fund == eintraege_.end() ? nullptr : &*fund;
}

QByteArray Behaelter::bytes() const {
    initialisieren();
    const Mithoeren log;
    const Griff<GsfOutput> ausgabe(gsf_output_memory_new());
    {
        const Griff<GsfOutfile> wurzel(gsf_outfile_msole_new(ausgabe.get()));
        klasseSetzen(wurzel.get(), wurzelklasse_);
        size_t i = 0;
        speicherSchreiben(wurzel.get(), {}, eintraege_, i);
        // Closes the memory behind it as well.
        if (!gsf_output_close(GSF_OUTPUT(wurzel.get())) || i != eintraege_.size()) nichtGeschrieben();
    }
    if (log.anzahl() > 0) nichtGeschrieben();
    return QByteArray(
        reinterpret_cast<const char*>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(ausgabe.get()))),
        qsizetype(gsf_output_size(ausgabe.get())));
}

}  // namespace excel
