// What a merge makes of two values.
#include "transform/verschmelzregel.h"

namespace {

constexpr int kLaengstes = 255;  // characters of a text field

}  // namespace

Wert Verschmelzen(const Wert& erster, const Wert& zweiter, const std::optional<QString>& trennzeichen) {
    if (!trennzeichen && erster.istLeerOderNull() && zweiter.istLeerOderNull()) return Wert::null();
    return Wert((erster.alsText() + trennzeichen.value_or(QString()) + zweiter.alsText()).left(kLaengstes));
}
