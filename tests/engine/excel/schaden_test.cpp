// One damage each at a workbook and at the compound file around it: refused, or read as if nothing were.
#include <QTemporaryDir>
#include <QtEndian>
#include <functional>

#include "engine/excel/proben.h"
#include "engine/excel/satzarten.h"

namespace {

const QString kProbe =
    "SimpleMultiCell.xls";  // one FAT sector, the workbook alone at its start, no mini stream
constexpr int kSektor = 512;
constexpr int kEintrag = 128;  // bytes of a directory entry
constexpr quint32 kKettenende = 0xFFFFFFFE;

// A compound file under the knife. Offsets of the header and of directory entries: seen in every sample.
class Datei {
  public:
    explicit Datei(QByteArray inhalt) : bytes(std::move(inhalt)) {}

    quint32 u32(qsizetype ab) const { return qFromLittleEndian<quint32>(bytes.constData() + ab); }
    quint16 u16(qsizetype ab) const { return qFromLittleEndian<quint16>(bytes.constData() + ab); }
    void setzen(qsizetype ab, quint32 wert) { qToLittleEndian(wert, bytes.data() + ab); }
    void setzen16(qsizetype ab, quint16 wert) { qToLittleEndian(wert, bytes.data() + ab); }

    static qsizetype sektor(quint32 nummer) { return (qsizetype(nummer) + 1) * kSektor; }
    qsizetype fat(quint32 nummer) const { return sektor(u32(76)) + 4 * qsizetype(nummer); }
    quint32 verzeichnis() const { return u32(48); }
    qsizetype wurzel() const { return sektor(verzeichnis()); }
    qsizetype mappe() const { return wurzel() + kEintrag; }
    quint32 strom() const { return u32(mappe() + 116); }

    // The place of the n-th record (from 0) of a type in the stream, which lies in one piece.
    qsizetype satz(quint16 typ, int n = 0) const {
        qsizetype ab = sektor(strom());
        while (ab + 4 <= bytes.size() && (u16(ab) != typ || n-- > 0)) ab += 4 + u16(ab + 2);
        EXPECT_LT(ab, bytes.size());
        return ab;
    }

    QByteArray bytes;
};

struct Fall {
    const char* was;
    bool lesbar;
    std::function<void(Datei&)> beschaedigen;
};

const Fall kFaelle[] = {
    {"no byte", false, [](Datei& d) { d.bytes.clear(); }},
    {"header only", false, [](Datei& d) { d.bytes.truncate(kSektor); }},
    {"cut in the middle", false, [](Datei& d) { d.bytes.truncate(d.bytes.size() / 2); }},
    {"last sector cut", false, [](Datei& d) { d.bytes.chop(200); }},
    {"sector size beyond all", false, [](Datei& d) { d.setzen16(30, 0xFFFF); }},
    {"sector size of one byte", false, [](Datei& d) { d.setzen16(30, 0); }},
    {"no FAT", false, [](Datei& d) { d.setzen(44, 0); }},
    {"more FAT than file", false, [](Datei& d) { d.setzen(44, 0xFFFFFF); }},
    {"FAT that is the stream", false, [](Datei& d) { d.setzen(76, d.strom()); }},
    {"FAT of the FAT in a ring", false,
     [](Datei& d) {
         d.setzen(68, d.verzeichnis());
         d.setzen(72, 1000);
     }},
    {"stream in a ring", false, [](Datei& d) { d.setzen(d.fat(d.strom()), d.strom()); }},
    {"stream ends early", false, [](Datei& d) { d.setzen(d.fat(d.strom()), kKettenende); }},
    {"stream goes on behind the end", false, [](Datei& d) { d.setzen(d.fat(d.strom()), 0xFFFFF0); }},
    {"length of the stream too big", false, [](Datei& d) { d.setzen(d.mappe() + 120, 0x7FFFFFFF); }},
    {"length of the stream 0", false, [](Datei& d) { d.setzen(d.mappe() + 120, 0); }},
    {"directory in a ring", false, [](Datei& d) { d.setzen(d.fat(d.verzeichnis()), d.verzeichnis()); }},
    {"entry that is its own neighbour", false, [](Datei& d) { d.setzen(d.mappe() + 68, 1); }},
    {"root that is its own child", false, [](Datei& d) { d.setzen(d.wurzel() + 76, 0); }},
    {"globals without an end", false, [](Datei& d) { d.setzen16(d.satz(excel::kEof), 0x3333); }},
    {"record longer than the stream", false,
     [](Datei& d) { d.setzen16(d.satz(excel::kBof, 1) + 2, 0xFFFF); }},
    {"sheet beyond the end", false, [](Datei& d) { d.setzen(d.satz(excel::kBoundsheet) + 4, 0x7FFFFFFF); }},
    {"sheet that is the globals", false, [](Datei& d) { d.setzen(d.satz(excel::kBoundsheet) + 4, 0); }},
    {"two sheets at one place", false,
     [](Datei& d) { d.setzen(d.satz(excel::kBoundsheet) + 4, d.u32(d.satz(excel::kBoundsheet, 1) + 4)); }},
    {"more texts than there are", true, [](Datei& d) { d.setzen(d.satz(excel::kSst) + 8, 0x7FFFFFFF); }},
    {"code page that there is not", true, [](Datei& d) { d.setzen16(d.satz(excel::kCodepage) + 4, 12345); }},
    {"sheet that claims all rows and columns", true,
     [](Datei& d) {
         const qsizetype ab = d.satz(excel::kDimensions);
         d.setzen(ab + 4, 0);
         d.setzen(ab + 8, 0x7FFFFFFF);
         d.setzen(ab + 12, 0xFFFF0000);
     }},
};

using Inhalt = std::vector<std::pair<QString, std::vector<engine::Zeile>>>;

Inhalt inhaltVon(excel::XlsDatei& mappe) {
    Inhalt inhalt;
    for (const engine::TabellenDef& def : mappe.katalogLesen().tabellen)
        inhalt.emplace_back(def.name, tabellenprobe::alleZeilen(mappe, def.name));
    return inhalt;
}

class ExcelSchaden : public testing::TestWithParam<Fall> {
  protected:
    QString geschrieben(const QByteArray& bytes) const {
        const QString pfad = ordner.filePath("a.xls");
        QFile datei(pfad);
        EXPECT_TRUE(datei.open(QIODevice::WriteOnly) && datei.write(bytes) == bytes.size());
        return pfad;
    }
    QTemporaryDir ordner;
};

TEST_P(ExcelSchaden, WirdAbgelehntOderStoertNicht) {
    PROBE_ODER_UEBERSPRINGEN(kProbe);
    QFile probe(proben::pfad(kProbe));
    ASSERT_TRUE(probe.open(QIODevice::ReadOnly));
    Datei datei(probe.readAll());
    excel::XlsDatei heil(geschrieben(datei.bytes));
    const Inhalt erwartet = inhaltVon(heil);
    ASSERT_FALSE(erwartet.empty());

    GetParam().beschaedigen(datei);
    const QString pfad = geschrieben(datei.bytes);
    QString text;
    if (!GetParam().lesbar) {
        EXPECT_NE(fehlerVon([&] { excel::XlsDatei mappe(pfad); }, &text), 0);
        EXPECT_FALSE(text.isEmpty());
        return;
    }
    excel::XlsDatei mappe(pfad);
    EXPECT_EQ(inhaltVon(mappe), erwartet);
    mappe.anwenden({tabellenprobe::anlegen(
        tabellenprobe::tabelle("Neu", {tabellenprobe::feld("A", dao::dbText, 9)}), {{Wert(u"x")}})});
    mappe.anwenden({engine::TabelleLoeschen{"Neu"}});
    excel::XlsDatei wieder(pfad);
    EXPECT_EQ(inhaltVon(wieder), erwartet);
}

INSTANTIATE_TEST_SUITE_P(Faelle, ExcelSchaden, testing::ValuesIn(kFaelle), [](const auto& fall) {
    return QString(fall.param.was).replace(QRegularExpression("[^A-Za-z0-9]"), "_").toStdString();
});

}  // namespace
