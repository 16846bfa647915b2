// Texts that are measured against each other again and again: what depends on one text alone is worked out
// once.
#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "search/textindex.h"

// A store of texts, numbered from 0. Its measures are those of masse.h, for texts that have at most
// `kMeisteWoerterJeText` words.
class Textvorrat {
  public:
    static constexpr qsizetype kMeisteWoerterJeText = 127;

    // The number of the text, which is added when it is new.
    int nummer(const QString& text);
    size_t anzahl() const { return texte_.size(); }
    // True when one of the texts has too many words to be measured here.
    bool zuVieleWoerter() const { return zuViele_; }

    float woerterVergleichen(int a, int b) const;
    // The words of a text from 0, empty ones included.
    size_t woerter(int text) const { return texte_[size_t(text)].woerter; }
    std::u16string_view wort(int text, size_t nummer) const {
        const Wort& w = woerter_[texte_[size_t(text)].ersteswort + nummer];
        return zeichen(w.anfang, w.laenge);
    }
    // True for at most eight characters, all below 256; they stand in `anfangsbytes`, the first one lowest.
    bool istKurz(int text) const { return texte_[size_t(text)].kurz; }
    size_t laenge(int text) const { return texte_[size_t(text)].laenge; }
    quint64 anfangsbytes(int text) const { return texte_[size_t(text)].anfangsbytes; }

    // Of texts that read as numbers.
    float nummernVergleichen(int a, int b) const;

  private:
    struct Wort {
        quint32 anfang;
        quint32 laenge;
        quint64 paare;  // a bit for each two neighbouring characters
    };
    struct Text {
        quint32 anfang;
        quint32 laenge;
        quint32 ersteswort;
        quint32 woerter;
        quint64 paare;
        quint64 anfangsbytes;  // the first eight characters when all are below 256
        bool kurz;             // there are no more than eight, all below 256
    };
    std::u16string_view zeichen(quint32 anfang, quint32 laenge) const {
        return {zeichen_.data() + anfang, laenge};
    }
    int trefferVon(const Text& text, const Text& anderer) const;

    Textindex nummern_;
    std::vector<Text> texte_;
    std::vector<Wort> woerter_;
    std::vector<char16_t> zeichen_;
    bool zuViele_ = false;
};
