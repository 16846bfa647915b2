// Finds numbers by text; the texts themselves stand with whoever asks.
#pragma once

#include <QtGlobal>
#include <cstring>
#include <string_view>
#include <vector>

// A hash of the text, four characters at a time.
inline quint32 Streuwert(std::u16string_view text) {
    constexpr quint64 kFaktor = 0x9E3779B97F4A7C15u;
    quint64 summe = text.size() * kFaktor;
    size_t i = 0;
    for (; i + 4 <= text.size(); i += 4) {
        quint64 vier;
        std::memcpy(&vier, text.data() + i, sizeof vier);
        summe = (summe ^ vier) * kFaktor;
        summe ^= summe >> 29;
    }
    for (; i < text.size(); ++i) summe = (summe ^ text[i]) * kFaktor;
    return quint32(summe >> 32);
}

class Textindex {
  public:
    // The number that was entered with this hash and that `gleich(number)` takes, -1 for none.
    template <typename Gleich>
    int suchen(quint32 streuwert, Gleich gleich) const {
        if (plaetze_.empty()) return -1;
        size_t i = streuwert & maske_;
        for (; plaetze_[i].nummer >= 0; i = (i + 1) & maske_)
            if (plaetze_[i].streuwert == streuwert && gleich(plaetze_[i].nummer)) return plaetze_[i].nummer;
        return -1;
    }
    // A number from 0 that is not there yet.
    void eintragen(quint32 streuwert, int nummer) {
        if (plaetze_.size() < 2 * (anzahl_ + 1)) vergroessern();
        ablegen({streuwert, nummer});
        ++anzahl_;
    }
    void leeren() {
        plaetze_ = {};
        anzahl_ = 0;
    }

  private:
    struct Platz {
        quint32 streuwert;
        int nummer;  // -1 for a free place
    };
    void ablegen(Platz platz) {
        size_t i = platz.streuwert & maske_;
        while (plaetze_[i].nummer >= 0) i = (i + 1) & maske_;
        plaetze_[i] = platz;
    }
    void vergroessern() {
        const std::vector<Platz> alt = std::move(plaetze_);
        plaetze_.assign(alt.empty() ? 64 : 2 * alt.size(), {0, -1});
        maske_ = plaetze_.size() - 1;
        for (const Platz& platz : alt)
            if (platz.nummer >= 0) ablegen(platz);
    }

    std::vector<Platz> plaetze_;  // a power of two of them, at most half of them taken
    size_t maske_ = 0;
    size_t anzahl_ = 0;
};
