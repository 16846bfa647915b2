// The record numbers of a workbook stream (BIFF5 and BIFF8) that the engine knows.
#pragma once

#include <QtGlobal>

namespace excel {

enum Satzart : quint16 {
    kFormula = 0x0006,
    kFormulaBiff3 = 0x0206,  // some programs (Numbers) write it into BIFF8; seen with the fields of kFormula
    kFormulaBiff4 = 0x0406,
    kEof = 0x000A,
    kProtect = 0x0012,
    kPassword = 0x0013,
    kExterncount = 0x0016,
    kExternsheet = 0x0017,
    kName = 0x0018,
    kWindowprotect = 0x0019,
    kDatemode = 0x0022,
    kExternname = 0x0023,
    kFilepass = 0x002F,
    kFont = 0x0031,
    kContinue = 0x003C,
    kWindow1 = 0x003D,
    kCodepage = 0x0042,
    kCrn = 0x005A,
    kXct = 0x0059,
    kWsbool = 0x0081,
    kBoundsheet = 0x0085,
    kCountry = 0x008C,
    kMulrk = 0x00BD,
    kMulblank = 0x00BE,
    kRstring = 0x00D6,
    kXf = 0x00E0,
    kMsodrawinggroup = 0x00EB,
    kSst = 0x00FC,
    kLabelsst = 0x00FD,
    kExtsst = 0x00FF,
    kTabid = 0x013D,
    kSupbook = 0x01AE,
    kRecalcid = 0x01C1,
    kDimensions = 0x0200,
    kBlank = 0x0201,
    kNumber = 0x0203,
    kLabel = 0x0204,
    kBoolerr = 0x0205,
    kString = 0x0207,
    kIndex = 0x020B,
    kArray = 0x0221,
    kTable = 0x0236,
    kWindow2 = 0x023E,
    kRk = 0x027E,
    kStyle = 0x0293,
    kShrfmla = 0x04BC,
    kFormat = 0x041E,
    kBof = 0x0809,
    kXfcrc = 0x087C,
    kNamecmt = 0x0894,
    kChartlink = 0x1051,
};

inline constexpr quint16 kBofBiff2 = 0x0009;
inline constexpr quint16 kBofBiff3 = 0x0209;
inline constexpr quint16 kBofBiff4 = 0x0409;

inline constexpr int kSatzkopf = 4;
inline constexpr int kMaxSatz8 = 8224;
inline constexpr int kMaxSatz5 = 2080;

}  // namespace excel
