// The working store's invariants: each one is found when it is broken.
#include "engine/store/invarianten.h"

#include <gtest/gtest.h>

namespace {

class Invarianten : public testing::Test {
  protected:
    Invarianten() {
        sqlite3_open(":memory:", &datenbank);
        tun("CREATE TABLE t7 (id INTEGER PRIMARY KEY, c0, c1)");
        tun("INSERT INTO t7 (id, c0) VALUES (1, 'x'), (4, 'y')");
        tun("CREATE TABLE t8 (id INTEGER PRIMARY KEY)");
    }
    ~Invarianten() override { sqlite3_close(datenbank); }
    void tun(const char* text) const {
        ASSERT_EQ(sqlite3_exec(datenbank, text, nullptr, nullptr, nullptr), SQLITE_OK);
    }
    QByteArray fund() const { return store::unstimmigkeit(datenbank, verzeichnis); }

    sqlite3* datenbank = nullptr;
    std::map<qint64, store::Tabellenbild> verzeichnis{{7, {2, 5}}, {8, {0, 1}}};
};

TEST_F(Invarianten, AllesStimmt) {
    EXPECT_EQ(fund(), "");
}

TEST_F(Invarianten, EineTabelleFehlt) {
    tun("DROP TABLE t8");
    EXPECT_EQ(fund(), "t8 is missing");
}

TEST_F(Invarianten, EineTabelleIstZuviel) {
    verzeichnis.erase(8);
    EXPECT_EQ(fund(), "more tables than the directory has");
}

TEST_F(Invarianten, EineSpalteIstZuviel) {
    verzeichnis[7].spalten = 1;
    EXPECT_EQ(fund(), "t7 has other columns");
}

TEST_F(Invarianten, EineIdWuerdeZweimalVergeben) {
    verzeichnis[7].naechsteId = 4;
    EXPECT_EQ(fund(), "t7 has a row with a later id");
}

TEST_F(Invarianten, EineAnweisungLaeuftNoch) {
    sqlite3_stmt* anweisung = nullptr;
    sqlite3_prepare_v2(datenbank, "SELECT * FROM t7", -1, &anweisung, nullptr);
    ASSERT_EQ(sqlite3_step(anweisung), SQLITE_ROW);
    EXPECT_EQ(fund(), "under way: SELECT * FROM t7");
    sqlite3_finalize(anweisung);
    EXPECT_EQ(fund(), "");
}

}  // namespace
