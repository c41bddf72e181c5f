// Words that models and units are made of, as messages list them.

#ifndef DV_SQL_WORDS_H
#define DV_SQL_WORDS_H

namespace dv::impl {

inline constexpr const char *SQL_MODEL_ELEMENTS[] = {
    "SYYYY", "YYYY", "YYY",  "YY",   "Y",    "RRRR", "RR",  "YEAR", "SYEAR", "IYYY", "IYY", "IY", "I",
    "CC",    "SCC",  "AD",   "BC",   "A.D.", "B.C.", "MM",  "MON",  "MONTH", "RM",   "Q",   "WW", "W",
    "IW",    "DD",   "DDD",  "DAY",  "DY",   "D",    "J",   "HH24", "HH",    "HH12", "MI",  "SS", "SSSSS",
    "AM",    "PM",   "A.M.", "P.M.", "FF",   "X",    "TZH", "TZM",  "TZR",   "TZD",  "FM",  "FX"};

inline constexpr const char *SQL_UNITS[] = {"CC",    "SCC",  "SYYYY", "YYYY", "YYY", "YY",   "Y",   "YEAR",
                                            "SYEAR", "IYYY", "IYY",   "IY",   "I",   "Q",    "MM",  "MON",
                                            "MONTH", "RM",   "WW",    "W",    "IW",  "DD",   "DDD", "J",
                                            "DAY",   "DY",   "D",     "HH24", "HH",  "HH12", "MI"};

inline constexpr const char *SQL_NUMBER_MODEL_ELEMENTS[] = {
    "9", "0", "X",  ".",  "D",    ",",  "G",        "$",   "C",   "L",
    "U", "S", "MI", "PR", "EEEE", "FM", "alone TM", "TM9", "TME", "RN"};

}  // namespace dv::impl

#endif  // DV_SQL_WORDS_H
