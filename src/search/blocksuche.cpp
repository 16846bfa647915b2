// Cuts the sorted table into blocks.
#include "search/blocksuche.h"

void Blocksuche::naechster(const Wert& wert) {
    ++position_;
    if (erster_ == 0) return beginnen(wert);
    if (!schluessel_ || wert.istNull()) return;  // nothing differs from Null, and Null from nothing
    if (QStringView(wert.alsText()).left(laenge_) == *schluessel_) return;
    beenden();
    beginnen(wert);
}

const std::vector<Suchblock>& Blocksuche::fertig() {
    if (erster_ != 0) {
        ++position_;
        beenden();
        erster_ = 0;
    }
    return bloecke_;
}

void Blocksuche::beginnen(const Wert& wert) {
    erster_ = position_;
    schluessel_.reset();
    if (!wert.istNull()) schluessel_ = wert.alsText().left(laenge_);
}

// The present record is the first one behind the run.
void Blocksuche::beenden() {
    if (schluessel_ && !schluessel_->isEmpty()) bloecke_.push_back({erster_, position_ - 1});
}
