// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/spread_map.h"

#include "editors/field_sheet.h"

#include <cmath>
#include <limits>

#include "support/table_help.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

std::string NotesOf(const SpreadMap& map) {
  std::string text;
  for (const std::string& note : map.notes) {
    text += (text.empty() ? "" : "; ") + note;
  }
  return text;
}

// What is at which point: "name: E,N E,N", rounded to millimetres.
std::string PlacesOf(const SpreadMap& map) {
  std::string text;
  for (const MapItem& item : map.items) {
    text += (text.empty() ? "" : "; ") + item.name + ":";
    for (const MapPoint& point : item.points) {
      text += " " + std::to_string(std::lround(point.east * 1000)) + "," +
              std::to_string(std::lround(point.north * 1000));
    }
  }
  return text;
}

// Places in millimetres, worked out by hand.
TEST(SpreadMap, PlacesWhatTheTableKnows) {
  struct Case {
    const char* settings;
    const char* places;
    const char* notes;
  };
  for (const auto& [settings, places, notes] : {
           Case{"TECH=1 ARRYTYP=1 NCHN=2 SNUM=7 CHDEF1=Ex1 EPOS1=450 NPOS1=1200 ENEG1=500 "
                "NNEG1=1200 CHDEF2=Ex2 EPOSTX=350 NPOSTX=1200 ENEGTX=250 NNEGTX=1200 ERXPOS=450 "
                "NRXPOS=1200 ETXCSRX=350 NTXCSRX=1200",
                "Tx: 350000,1200000 250000,1200000; Ex1: 450000,1200000 500000,1200000; "
                "Rx station: 450000,1200000; Tx station: 350000,1200000",
                "Local Box 7: no positions of Ex2"},
           // The other electrode of a pole is far away; a coil has one place.
           Case{"TECH=2 ARRYTYP=2 NCHN=2 CHDEF1=Hz CHDEF2=Ex EPOS1=3 NPOS1=4 ENEG1=9 NPOS2=-50 "
                "EPOSTX=8",
                "Tx: 8000,0; Hz: 3000,4000; Ex: 0,-50000 0,0",
                "Rx station: position not set; Tx station: position not set"},
           Case{"TECH=4 NCHN=1 CHDEF1=Ex ENEG1=-50 SN02=9 NCHN2R=1 DEF2R1=Ey EPOS2R1=5",
                "Ex: 0,0 -50000,0; Ey: 5000,0 0,0; Start pot: 0,0",
                "Transmitter 0: no positions of Tx"},
           // 300 x 400 m has a diagonal of 500 m, 36.87 degrees from the long side.
           Case{"TECH=3 ARRYTYP=12 LLENGTH=400 LWIDTH=300 TXAZIM=36.8698976458 EPOSTX=1000 "
                "NPOSTX=2000 ENEGTX=1200 NNEGTX=2000 NCHN=0",
                "Transmitter loop 400 x 300 m: 950000,1800000 1250000,1800000 1250000,2200000 "
                "950000,2200000",
                ""},
           Case{"TECH=6 ARRYTYP=15 LLENGTH=400 LWIDTH=300 TXAZIM=126.8698976458 NCHN=0",
                "Transmitter loop 400 x 300 m: -200000,150000 -200000,-150000 200000,-150000 "
                "200000,150000",
                "Transmitter loop 400 x 300 m: position not known"},
           Case{"TECH=3 ARRYTYP=14 NCHN=1 EPOS1=1 LLENGTH=400 LWIDTH=300", "channel 1: 1000,0 0,0",
                "Transmitter loop 400 x 300 m: position not known"},
           Case{"TECH=3 ARRYTYP=12 LLENGTH=400 EPOSTX=1 NCHN=0", "Tx: 1000,0 0,0",
                "Transmitter loop: size not set"},
           Case{"TECH=3 ARRYTYP=13 LLENGTH=400 LWIDTH=300 EPOSTX=1 NCHN=0", "Tx: 1000,0 0,0", ""},
           Case{"TECH=5 EAZM=90 EXLN=100 EYLN=60 HAZM=0 SNUM=7",
                "Ex: 50000,0 -50000,0; Ey: 0,-30000 0,30000; Hx: 20616,-27904 20616,-13327; "
                "Hy: 13327,-20616 27904,-20616",
                "Places count from the middle of the site; Coils: only their directions are known"},
           Case{"TECH=5 EXLN=0 EYLN=-3", "Hx: 0,-5000 0,5000; Hy: -5000,0 5000,0",
                "Places count from the middle of the site; Ex dipole: length or azimuth not set; "
                "Ey dipole: length or azimuth not set; Coils: only their directions are known"},
           Case{"TECH=0 NCHN=1 EPOS1=1e300", "",
                "Transmitter 0: no positions of Tx; Local Box 0: no positions of channel 1"},
       }) {
    SCOPED_TRACE(settings);
    ParamTable table = NewTable();
    SetAll(&table, settings);
    const SpreadMap map = MapOf(table);
    EXPECT_EQ(PlacesOf(map), places);
    EXPECT_EQ(NotesOf(map), notes);
  }
}

TEST(SpreadMap, SaysInWordsWhereThingsAre) {
  ParamTable table = NewTable();
  SetAll(&table,
         "TECH=4 SNUM=7 NCHN=3 CHDEF1=Ex EPOS1=10 NPOS1=20 ZPOS1=712 ENEG1=13 NNEG1=16 CHDEF2=Hy "
         "EPOS2=1 CHDEF3=a\tb");
  const SpreadMap map = MapOf(table);
  ASSERT_EQ(map.items.size(), 3U);
  EXPECT_EQ(Describe(map.items[0]),
            "Ex, Local Box 7: from 10 E, 20 N to 13 E, 16 N (m), length 5 m, azimuth 143.13 "
            "degrees, elevation 712 m");
  EXPECT_EQ(Describe(map.items[1]), "Hy, Local Box 7: 1 E, 0 N (m)");
  ParamTable site = NewTable();
  SetAll(&site, "TECH=5 SNUM=7 CHEX=1 EAZM=90 EXLN=100");
  EXPECT_EQ(Describe(MapOf(site).items[0]),
            "Ex, Local Box 7: from 50 E, 0 N to -50 E, 0 N (m), length 100 m, azimuth 90 degrees");
  EXPECT_EQ(map.IndexOf(1, 1), 1);
  EXPECT_EQ(map.IndexOf(-1, -1), -1) << "the station is of no box";
  const auto extent = map.Extent();
  ASSERT_TRUE(extent.has_value());
  EXPECT_EQ(PlaceText(extent->least) + ", " + PlaceText(extent->most), "0 E, 0 N, 13 E, 20 N");
  EXPECT_EQ(Summarize(map),
            "1 dipole, 1 sensor, 1 station. Transmitter 0: no positions of Tx. Local Box 7: no "
            "positions of a\tb");
  EXPECT_EQ(ElectrodeLines(table),
            "Box\tChannel\tName\tE+ (m)\tN+ (m)\tZ+ (m)\tE- (m)\tN- (m)\tZ- (m)\n"
            "Transmitter 0\t1\tTx\t\t\t\t\t\t\n"
            "Local Box 7\t1\tEx\t10\t20\t712\t13\t16\t\n"
            "Local Box 7\t2\tHy\t1\t0\t0\t0\t0\t\n"
            "Local Box 7\t3\ta\\x09b\t\t\t\t\t\t\n");
}

TEST(FieldSheet, HasAPageForEachBox) {
  ParamTable table = NewTable();
  SetAll(
      &table,
      "TECH=1 ARRYTYP=1 SNUM=7 SNTX=3 NCHN=2 CHDEF1=Ex1 EPOS1=450 NPOS1=1 ENEG1=500 NNEG1=2 GFC1=1 "
      "CHDEF2=Hy EGNC=2 HGNC=-1 SN02=9 NCHN2R=0 TMZONE=1 TMDIFF=-5 STIM=2026/11/24_03:00:00 "
      "HXSN=TARK1 SITE=S0");
  const auto describe = [&table] {
    std::string text;
    for (const FieldSheet& sheet : FieldSheetsOf(table, UtcClock())) {
      text += sheet.title + "; ";
      for (const auto& channel : sheet.channels) {
        for (const std::string& cell : channel) {
          text += cell + "|";
        }
      }
    }
    return text;
  };
  EXPECT_EQ(describe(),
            "Transmitter 3; 1||||||x 0.25|||Local Box 7; 1|Ex1|450|1|500|2|x 16|1||"
            "2|Hy|||||x 0.25|0||Aux. Box 9; ");
  Set(&table, "AUTO", "3");
  const ScheduleFile steps = {{}, true, {}, {{60, 4, 8, 5}, {90, 4, 16, 2.5}}};
  const auto local = FieldSheetsOf(table, UtcClock(), &steps)[1];
  EXPECT_EQ(local.box, 1);
  const auto value = [&local](std::string_view label) {
    for (const SheetLine& line : local.lines) {
      if (line.label == label) {
        return line.value;
      }
    }
    return std::string("no such line");
  };
  EXPECT_EQ(value("Record start"), "2026/11/23 22:00:00 local (UTC-5), 2026/11/24 03:00:00 UTC");
  EXPECT_EQ(value("Record end"), "not set");
  EXPECT_EQ(value("Coils Hx, Hy, Hz"), "TARK1, , ");
  EXPECT_EQ(value("Site"), "S0");
  EXPECT_EQ(value("Steps, until"), "60 s: 8 Hz, 5 A; 90 s: 16 Hz, 2.5 A");
  EXPECT_EQ(value("High rates start"), "no such line");
  Set(&table, "TECH", "5");
  EXPECT_EQ(describe().substr(0, 14), "Local Box 7; 1");
}

TEST(SpreadMap, TakesAnyTable) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    ParamTable table = RandomTable(seed);
    Set(&table, "TECH", std::to_string(seed % 8));
    ParamValue odd{};
    PutReal(seed % 2 == 0 ? std::numeric_limits<double>::quiet_NaN() : -1e308, &odd);
    for (const ParamKey key : {"EXLN", "TXAZIM", "NPOS1", "LWIDTH", "ERXPOS"}) {
      ASSERT_EQ(table.SetParam(key, FltPT, odd.data()), kOk);
    }
    const SpreadMap map = MapOf(table);
    for (const MapItem& item : map.items) {
      for (const MapPoint& point : item.points) {
        EXPECT_LT(std::abs(point.east) + std::abs(point.north), 1e9) << item.name;
      }
    }
    EXPECT_FALSE(Summarize(map).empty());
    EXPECT_LE(FieldSheetsOf(table, UtcClock()).size(), 8U);
  }
}

}  // namespace
}  // namespace orvane
