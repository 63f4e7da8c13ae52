// Tables of channels: what stands in them, what is read of them, and what of those that nobody
// wrote like this.
#include "kit/failure.h"
#include "kit/interchange/csv/csv_text.h"
#include "kit/interchange/exchange.h"

namespace zortunedex::kit {

namespace {

using interchange::Code;
using interchange::Import;
using interchange::Loss;
using interchange::csv::Row;
using interchange::csv::Rows;

Exchange Fm() { return Exchange(999, InputSignalFMRadio); }
Exchange Satellite() { return Exchange(49, InputSignalDVBSatellite); }

/// The table again, as a program with other habits saves it.
std::string SavedAgain(std::string_view table, char separator, const char* end, bool mark) {
  std::string again = mark ? "\xEF\xBB\xBF" : "";
  Rows rows(table);
  while (std::optional<Row> row = rows.Next()) {
    for (std::size_t i = 0; i < row->cells.size(); ++i) {
      if (i != 0) again += separator;
      again += '"';
      for (const char byte : row->cells[i]) again += byte == '"' ? "\"\"" : std::string(1, byte);
      again += '"';
    }
    again += end;
  }
  return again;
}

TEST(Csv, HasTheColumnsOfTheFileAndItsLists) {
  const Exchange exchange = Satellite();
  const std::string table = exchange.Out("csv").output.Bytes();
  EXPECT_TRUE(table.starts_with("\xEF\xBB\xBFname,nameDisplay,index,physicalChannel,networkName,"));
  const std::string head = table.substr(0, table.find('\n') + 1);
  EXPECT_TRUE(
      head.ends_with("LNB_SwitchFreq,VideoStream,AudioStream,TeletextStream,"
                     "SubtitleStream,DsmccStream,MhpAitStream\r\n"));
  EXPECT_NE(std::string::npos, table.find(",LinearH,0,1727,297,192,22000,FEC 2/3,NotSet,automatic,"
                                          "E0 10 38 F2,9750000,10600000,11700000,27|5101|0,"
                                          "3|5102|1364 3|5103|925 6|5106|1364,"));
}

TEST(Csv, GoesWithoutAMark) {
  const Exchange exchange = Fm();
  interchange::ExportRequest request = exchange.Request();
  request.mark = false;
  interchange::Export out = interchange::ExportChannels(*interchange::FindFormat("csv"), request);
  EXPECT_EQ("name,nameDisplay,index,freq,favor,lock\r\n", out.output.Bytes());
}

TEST(Csv, IsReadAsSpreadsheetsSaveItAgain) {
  Random random(3);
  Exchange exchange = Satellite();
  for (UINT i = 0; i < 20; ++i) {
    exchange.Channels().push_back(RandomChannel(exchange, random, 1000 + i));
  }
  const std::string table = exchange.Out("csv").output.Bytes();
  for (const char separator : {',', ';', '\t'}) {
    for (const char* end : {"\n", "\r\n"}) {
      for (const bool mark : {false, true}) {
        const Import in = exchange.In("csv", SavedAgain(table, separator, end, mark));
        EXPECT_EQ("", CodesOf(in.losses));
        EXPECT_TRUE(SameChannels(exchange.Channels(), in.table.channels)) << separator;
      }
    }
  }
}

TEST(Csv, TakesColumnsInAnyOrderAndLetterCase) {
  const Import in = Fm().In("csv", "FREQ;Name\n98500;Radio\n");
  ASSERT_EQ(1U, in.table.channels.size());
  EXPECT_EQ(98500U, in.table.channels[0].frequency);
  EXPECT_EQ(Wide("Radio"), in.table.channels[0].displayName);
  EXPECT_EQ(1U, in.table.channels[0].index);
  EXPECT_EQ("", CodesOf(in.losses));
}

TEST(Csv, TellsColumnsApartByTheirLetters) {
  const Import in =
      Satellite().In("csv", "NAME,AUDIOSTREAM,audioStream,AudioStream,Index\na,1,1,3|5|0,4\n");
  EXPECT_EQ("L502 AUDIOSTREAM", CodesOf(in.losses));
  ASSERT_EQ(1U, in.table.channels.size());
  EXPECT_EQ(4U, in.table.channels[0].index);
  EXPECT_EQ(1U, station_blocks::Fetch(in.table.channels[0].block.data() + 184, 4));
  EXPECT_EQ(1U, station_blocks::Fetch(in.table.channels[0].block.data() + 188, 4));
}

TEST(Csv, TakesRatesWithAndWithoutTheirWord) {
  const Import in =
      Satellite().In("csv", "name,innerFECRate\na,FEC 3/4\nb,7/8\nc,notset\nd,FEC 9/10\n");
  ASSERT_EQ(4U, in.table.channels.size());
  const std::size_t place =
      station_blocks::OffsetOf(station_blocks::kDvbsSatelliteParams, "innerFECRate");
  const auto rate = [&](std::size_t i) {
    return static_cast<std::int32_t>(
        station_blocks::Fetch(in.table.channels[i].block.data() + place, 4));
  };
  EXPECT_EQ(3, rate(0));
  EXPECT_EQ(8, rate(1));
  EXPECT_EQ(-1, rate(2));
  EXPECT_EQ(-1, rate(3));
  EXPECT_EQ("L110 innerFECRate", CodesOf(in.losses));
  EXPECT_EQ(FieldValue{std::string("9/10")}, in.losses.All()[0].value);
}

TEST(Csv, TakesNumbersForTheWordsThatTheyAreWrittenAs) {
  const Import in =
      Satellite().In("csv", "name,innerFECRate\na,3\nb,0\nc,-1\nd,99\ne,4294967299\n");
  ASSERT_EQ(5U, in.table.channels.size());
  const std::size_t place =
      station_blocks::OffsetOf(station_blocks::kDvbsSatelliteParams, "innerFECRate");
  const std::int32_t rates[] = {3, -1, -1, -1, -1};
  for (std::size_t i = 0; i < 5; ++i) {
    const BYTE* rate = in.table.channels[i].block.data() + place;
    EXPECT_EQ(rates[i], static_cast<std::int32_t>(station_blocks::Fetch(rate, 4))) << i;
  }
  EXPECT_EQ("L110 innerFECRate", CodesOf(in.losses));
  EXPECT_EQ(2U, in.losses.All().size());
}

TEST(Csv, LeavesOutRowsWithAnotherNumberOfCells) {
  const Import in = Fm().In("csv", "name,freq\na,1\nb\nc,2,3\nd,4,,\n\"e,5\n");
  ASSERT_EQ(2U, in.table.channels.size());
  EXPECT_EQ(Wide("a"), in.table.channels[0].name);
  EXPECT_EQ(Wide("d"), in.table.channels[1].name);  // spreadsheets fill up rows
  EXPECT_EQ(5U, in.read);
  EXPECT_EQ(2U, in.taken);
  EXPECT_EQ("L501 line", CodesOf(in.losses));
  std::vector<std::size_t> lines;
  for (const Loss& loss : in.losses.All()) lines.push_back(loss.place.line);
  EXPECT_EQ((std::vector<std::size_t>{3, 4, 6}), lines);
}

TEST(Csv, AccountsForUnknownColumnsAndValuesOutOfRange) {
  const Import in = Fm().In(
      "csv",
      "name,colour,freq,lock\na,red,4294967296,x\nb,,0x10,1\nc,,-1,99999999999999999999999\n");
  ASSERT_EQ(3U, in.table.channels.size());
  EXPECT_EQ("L502 colour, L503 freq, L503 lock", CodesOf(in.losses));
  EXPECT_EQ(4U, in.losses.All().size());
  EXPECT_EQ(0U, in.table.channels[0].frequency);
  EXPECT_EQ(16U, in.table.channels[1].frequency);
  EXPECT_EQ(UINT32_MAX, in.table.channels[2].frequency);
}

TEST(Csv, TakesTheEntriesOfAListForItsCount) {
  const Import in = Satellite().In(
      "csv", "name,numOfAudioStreams,AudioStream\na,1,3|257|0 3|258|1364\nb,2,\nc,,4|259\n");
  ASSERT_EQ(3U, in.table.channels.size());
  const auto count = [&](std::size_t i) {
    return station_blocks::Fetch(in.table.channels[i].block.data() + 188, 4);
  };
  EXPECT_EQ(2U, count(0));
  EXPECT_EQ(0U, count(1));
  EXPECT_EQ(1U, count(2));
  EXPECT_EQ(258U, station_blocks::Fetch(in.table.channels[0].block.data() + 192 + 12, 2));
  EXPECT_EQ("L503 numOfAudioStreams", CodesOf(in.losses));
  EXPECT_EQ(2U, in.losses.All().size());
}

TEST(Csv, DropsEntriesBeyondTheRoomOfAList) {
  std::string entries;
  for (int i = 0; i < 17; ++i) entries += "3|" + std::to_string(100 + i) + "|0 ";
  const Import in = Satellite().In("csv", "name,AudioStream\na," + entries + "\n");
  EXPECT_EQ("L102 AudioStream", CodesOf(in.losses));
  EXPECT_EQ(16U, station_blocks::Fetch(in.table.channels[0].block.data() + 188, 4));
}

TEST(Csv, RefusesWhatIsNoTable) {
  for (const char* text : {"", "\n\n", "colour,size\n1,2\n", "<?xml version=\"1.0\"?>\n<a/>\n",
                           "{\"tunedex\":\"channels\"}",
                           "\x7F"
                           "ELF\x02\x01"}) {
    ExpectRaised<Failure>(
        "the file is no table of channels of FMRadio: its first row names no column",
        [&] { Fm().In("csv", text); });
  }
}

TEST(Csv, TakesTextsThatAreNoUtf8) {
  const Import in = Fm().In("csv", "name,freq\nSt\xF6rt\xFF,1\n");
  ASSERT_EQ(1U, in.table.channels.size());
  EXPECT_EQ("L201 name", CodesOf(in.losses));
  // The code page may have another sign for what it has no character for.
  const Exchange exchange = Fm();
  const std::string stored =
      exchange.Narrow().Replacing(*utf::ToWide("St\xEF\xBF\xBDrt\xEF\xBF\xBD"));
  EXPECT_EQ(exchange.Narrow().ToWide(stored), in.table.channels[0].name);
}

TEST(Csv, CutsTextsThatAreTooLongBetweenTwoCharacters) {
  const Exchange exchange = Fm();
  const std::string name(
      80 - exchange.Narrow().FromWide(*utf::ToWide("\xE2\x82\xAC")).value().size(), 'x');
  const Import in = Fm().In("csv", "name,freq\n" + name + "\xE2\x82\xAC,1\n");
  ASSERT_EQ(1U, in.table.channels.size());
  EXPECT_EQ("L201 name", CodesOf(in.losses));
  EXPECT_EQ(name, utf::FromWide(in.table.channels[0].name));
}

/// 300,000 bytes of a part, between others: what looked at anything again and again would not end.
std::string Hostile(const std::string& head, const std::string& part, const std::string& tail) {
  std::string text = head;
  while (text.size() < 300'000) text += part;
  return text + tail;
}

TEST(Csv, AccountsForEveryValueOfAnEntry) {
  const Exchange exchange(49, InputSignalDVBTerrestrial);
  EXPECT_EQ("L502 AudioStream",
            CodesOf(exchange.In("csv", "name,AudioStream\nx,3|5|0|7\n").losses));
  const Exchange mobile(82, InputSignalTDMBMobile);
  EXPECT_EQ("L502 Components", CodesOf(mobile.In("csv", "name,Components\nx,a|5|0\n").losses));
}

TEST(Csv, ComesToAnEndWithHostileTables) {
  const Exchange exchange = Fm();
  const auto codes = [&](const std::string& table) {
    return CodesOf(exchange.In("csv", table).losses);
  };
  EXPECT_EQ("L201 name", codes(Hostile("nameDisplay,freq,name\nx,1,", "x", "\n")));
  EXPECT_EQ("L503 freq", codes(Hostile("name,freq\nx,", "9", "\n")));
  EXPECT_EQ("L503 freq", codes(Hostile("name,freq\nx,0x", "F", "\n")));
  EXPECT_EQ("L501 line", codes(Hostile("name,freq\n\"", "\"\"", "")));
  EXPECT_EQ("L501 line", codes(Hostile("name,freq\n", ",x", "\n")));
  EXPECT_EQ("", codes(Hostile("name,freq\n", "\r\n", "x,1")));
  EXPECT_EQ("L502 colour, L502 name", codes(Hostile("name", ",colour,name", "\n")));
  EXPECT_EQ("L501 line", codes(Hostile("name,freq\n", "a\n", "")));
  const Exchange satellite(49, InputSignalDVBSatellite);
  const auto losses =
      satellite.In("csv", Hostile("name,AudioStream\nx,", "3|5|0 ", "\n")).losses.All();
  ASSERT_EQ(1U, losses.size());
  EXPECT_EQ(FieldValue{std::int64_t{49'997}}, losses[0].value);
}

}  // namespace

}  // namespace zortunedex::kit
