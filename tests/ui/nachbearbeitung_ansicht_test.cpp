// The review window as it looks: in three text sizes, light and dark, with few and with many fields.
#include "ui/ansicht.h"
#include "ui/nachbearbeitung.h"

namespace {

class Nachbearbeitungsansicht : public Nachbearbeitung, public testing::WithParamInterface<Ansicht> {
  protected:
    void mitFeldern(int anzahl) {
        QStringList weitere;
        for (int i = 0; i < anzahl; ++i) weitere << QStringLiteral("%1 ").arg(i) + QString(60, u'W');
        inhalt.tabellen[0].def = tabelle(weitere);
        inhalt.tabellen[0].zeilen.clear();
        for (int gruppe = 1; gruppe <= 40; ++gruppe) {
            zeile(3 * gruppe, 13, gruppe, u"Müller", u"Köln");
            zeile(3 * gruppe + 1, 13, gruppe, u"Müller KG und Söhne, Gesellschaft", u"Köln");
            zeile(1000 + gruppe, gruppe % 3 ? 12 : 21, gruppe, u"Müller KG und Söhne, Gesellschaft", u"Köln");
        }
    }
    void pruefen(const QString& was) {
        const MitAnsicht ansicht(GetParam());
        zeigen();
        // The test's screen is smaller than any on which somebody writes that large.
        if (GetParam().schrift > 1.5) frm->resize(900, 950);
        AnsichtPruefen(frm.get(), QStringLiteral("nachbearbeitung-%1-%2").arg(was, Ansichtsname(GetParam())));
    }
};

TEST_P(Nachbearbeitungsansicht, WenigeFelder) {
    mitFeldern(3);
    pruefen(QStringLiteral("5"));
}

TEST_P(Nachbearbeitungsansicht, ZweihundertfuenfzigFelder) {
    mitFeldern(248);
    pruefen(QStringLiteral("250"));
}

TEST_P(Nachbearbeitungsansicht, NichtsZuZeigen) {
    inhalt.tabellen[0].zeilen.clear();
    pruefen(QStringLiteral("leer"));
}

INSTANTIATE_TEST_SUITE_P(Ansicht, Nachbearbeitungsansicht, AlleAnsichten(), Fallname);

}  // namespace
