// Reads tables that are written as text.
#include "csv.h"

#include <stdexcept>

namespace {

class Leser {
  public:
    explicit Leser(QStringView text) : text_(text) {}

    bool amEnde() const { return stelle_ >= text_.size(); }

    QStringList satz() {
        QStringList felder{feld()};
        while (!amEnde() && text_[stelle_] == u';') {
            ++stelle_;
            felder += feld();
        }
        zeilenendeUebergehen();
        return felder;
    }

  private:
    QString feld() { return !amEnde() && text_[stelle_] == u'"' ? inAnfuehrung() : schlicht(); }

    QString schlicht() {
        const qsizetype anfang = stelle_;
        while (!amEnde() && text_[stelle_] != u';' && text_[stelle_] != u'\r' && text_[stelle_] != u'\n')
            ++stelle_;
        return text_.mid(anfang, stelle_ - anfang).toString();
    }

    QString inAnfuehrung() {
        QString feld;
        for (++stelle_; !amEnde(); ++stelle_) {
            if (text_[stelle_] == u'"') {
                ++stelle_;
                if (amEnde() || text_[stelle_] != u'"') return feld;
            }
            feld += text_[stelle_];
        }
        throw std::runtime_error("Ein Feld in Anführungszeichen endet nicht.");
    }

    void zeilenendeUebergehen() {
        while (!amEnde() && (text_[stelle_] == u'\r' || text_[stelle_] == u'\n')) ++stelle_;
    }

    QStringView text_;
    qsizetype stelle_ = 0;
};

}  // namespace

std::vector<QStringList> CsvLesen(QStringView text) {
    std::vector<QStringList> saetze;
    Leser leser(text);
    while (!leser.amEnde()) saetze.push_back(leser.satz());
    return saetze;
}
