// Puts the pieces of the program together.
#include "programm/zusammenbau.h"

#include "data/start.h"
#include "engine/dao/oeffner.h"
#include "engine/dbase/dbaseordner.h"
#include "engine/excel/xlsdatei.h"
#include "engine/jet/mdbdatei.h"
#include "junk/muellsuche.h"
#include "run/rahmen.h"
#include "run/zustand.h"
#include "search/dublettensuche.h"
#include "tables/datenabgleich.h"
#include "tables/neuedaten.h"
#include "transform/splitten.h"
#include "transform/verschmelzen.h"
#include "ui/anwendung.h"

namespace {

void formateAnschliessen() {
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, jet::mdbOeffnen);
    dao::DateiOeffnerSetzen(dao::Dateiart::Dbase, dbase::dbaseOeffnen);
    dao::DateiOeffnerSetzen(dao::Dateiart::Excel, excel::xlsOeffnen);
}

void laeufeAnschliessen() {
    LaufEinstiegSetzen(1, [] { DublettensucheStarten(gAusgangsTabelle, gZielTabelle); });
    LaufEinstiegSetzen(2, [] { MuellsucheStarten(gAusgangsTabelle, gZielTabelle); });
    LaufEinstiegSetzen(3, [] { SplittenStarten(gAusgangsTabelle, gZielTabelle); });
    LaufEinstiegSetzen(4, [] { VerschmelzenStarten(gAusgangsTabelle, gZielTabelle); });
    LaufEinstiegSetzen(5, [] {
        DatenabgleichStarten(gAusgangsTabelle, gZweiteTabelle, gZielTabelle, gZuordnungenTabelle1,
                             gZuordnungenTabelle2);
    });
    LaufEinstiegSetzen(6, [] {
        NeueDatenStarten(gAusgangsTabelle, gZweiteTabelle, gZielTabelle, gZuordnungenTabelle1,
                         gZuordnungenTabelle2);
    });
}

}  // namespace

Programm::Programm() {
    AnwendungEinrichten();
    formateAnschliessen();
    laeufeAnschliessen();
    haupt_ = std::make_unique<FrmHaupt>();
    fenster_ = std::make_unique<FensterQt>(*haupt_);
    FensterSetzen(fenster_.get());
    ProgrammStarten();
    gVorgang = 0;
    RahmenOeffnen(0, true);
    haupt_->show();
}

void Programm::dateiOeffnen(const QString& pfad) {
    constexpr int kRahmenDatenbank = 2;
    RahmenWechseln(gRahmen, kRahmenDatenbank, false, true);
    haupt_->rahmenDatenbank->dateiEintragen(pfad);
    WeiterGehen();
}

Programm::~Programm() {
    FensterSetzen(nullptr);
}
