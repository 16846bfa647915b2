// The control columns that a run puts behind the user's fields, and the states of a record.
#pragma once

inline constexpr char16_t kTempDss[] = u"TEMP_DSS";  // state of the record
inline constexpr char16_t kTempDsn[] = u"TEMP_DSN";  // its number, from 1
inline constexpr char16_t kTempBn[] = u"TEMP_BN";    // its group, 0 for none
inline constexpr char16_t kTempAmk[] = u"TEMP_AMK";  // remark
inline constexpr char16_t kTempDsq[] = u"TEMP_DSQ";  // the table it comes from: 1 or 2

enum Satzstatus : int {
    kStatusNormal = 11,
    kStatusAngereichert = 12,
    kStatusDublette = 13,
    kStatusMuell = 14,
    kStatusAngereichertBleibt = 21,
    kStatusDubletteBleibt = 22,
    kStatusMuellBleibt = 23,
};
