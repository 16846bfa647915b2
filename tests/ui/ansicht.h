// What every window has to keep: nothing is cut off or covered, buttons stand apart, everything has a name, a
// key leads to one thing alone, and the tab key goes in the order in which one reads.
#pragma once

#include <gtest/gtest.h>

#include <QWidget>

// Each looks at what is visible in `fenster`, which must be on show, and fails the test for every breach.
void NichtsAbgeschnitten(QWidget* fenster);
void NichtsUeberdeckt(QWidget* fenster);
void AllesHatEinenNamen(QWidget* fenster);
void KuerzelEindeutig(QWidget* fenster);
void TabFolgtDemLesen(QWidget* fenster);

// All five, and a picture `name`.png in the folder of the environment variable LINDGARN_BILDER if it is set.
void AnsichtPruefen(QWidget* fenster, const QString& name);

// Text sizes and palettes in which the windows are looked at; in force until the end of the test.
struct Ansicht {
    double schrift;  // of the desktop's own size
    bool dunkel;
};
void PrintTo(const Ansicht& ansicht, std::ostream* strom);
// "150Dunkel", as part of a name.
QString Ansichtsname(const Ansicht& ansicht);
class MitAnsicht {
  public:
    explicit MitAnsicht(const Ansicht& ansicht);
    ~MitAnsicht();
    MitAnsicht(const MitAnsicht&) = delete;
    MitAnsicht& operator=(const MitAnsicht&) = delete;

  private:
    QFont schrift_;
    QPalette farben_;
};

// For the suites that look at a window in all of them.
inline auto AlleAnsichten() {
    return testing::Values(Ansicht{1, false}, Ansicht{1, true}, Ansicht{1.5, false}, Ansicht{2, true});
}
inline std::string Fallname(const testing::TestParamInfo<Ansicht>& fall) {
    return Ansichtsname(fall.param).toStdString();
}
