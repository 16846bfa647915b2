// Dates and numbers of cells.
#include "engine/excel/zahlenwerte.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace excel {
namespace {

constexpr double kUnterschied1904 = 1462;
constexpr double kEndeDerTage = 2958466;    // 10000-01-01
constexpr double kErsterRichtigerTag = 61;  // day 60 is the 29 February 1900 that did not exist
constexpr double kSekundenJeTag = 86400;
constexpr double kGanzGenau = 1e15;
constexpr double kLangeForm = 1e21;

}  // namespace

std::optional<DatumZeit> datumAus(double seriell, bool datum1904) {
    const double ende = kEndeDerTage - (datum1904 ? kUnterschied1904 : 0);
    if (!(seriell >= 0 && seriell < ende)) return {};
    const double gerundet = std::round(seriell * kSekundenJeTag) / kSekundenJeTag;
    if (gerundet < 1) return DatumZeit{gerundet};
    if (datum1904) return DatumZeit{gerundet + kUnterschied1904};
    return DatumZeit{gerundet < kErsterRichtigerTag ? gerundet + 1 : gerundet};
}

std::optional<double> seriellAus(DatumZeit datum, bool datum1904) {
    const double tage = datum.tage;
    if (!(tage >= 0 && tage < kEndeDerTage)) return {};
    if (tage < 1) return tage;
    if (datum1904)
        return tage >= kUnterschied1904 + 1 ? std::optional(tage - kUnterschied1904) : std::nullopt;
    if (tage < 2) return {};
    return tage < kErsterRichtigerTag ? tage - 1 : tage;
}

QString zahlWieGezeigt(double zahl, Formatangabe format, bool datum1904) {
    if (format.art == Formatart::Datum)
        if (const auto datum = datumAus(zahl, datum1904)) return datumText(*datum);
    if (format.art == Formatart::Nullen && std::abs(zahl) < kGanzGenau) {
        const qint64 ganz = std::llround(std::abs(zahl));
        const QString ziffern = QString::number(ganz).rightJustified(format.nullen, u'0');
        return zahl < 0 && ganz != 0 ? u'-' + ziffern : ziffern;
    }
    if (zahl == 0) return QStringLiteral("0");
    if (std::abs(zahl) >= kLangeForm || std::abs(zahl) < 1 / kLangeForm) return zahlText(zahl);
    return QString::number(zahl, 'f', QLocale::FloatingPointShortest).replace(u'.', u',');
}

std::optional<double> zahlHinterNullen(const QString& text, int nullen) {
    const bool ziffern =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!ziffern || text.isEmpty() || text.size() > 15) return {};
    const double zahl = text.toDouble();
    const QString gezeigt = zahlWieGezeigt(zahl, {Formatart::Nullen, nullen}, false);
    return gezeigt == text ? std::optional(zahl) : std::nullopt;
}

}  // namespace excel
