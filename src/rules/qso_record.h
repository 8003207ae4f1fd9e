// One contact on its way from a reader to a writer. Every field is UTF-8 text; an absent value is
// empty.
#pragma once

#include <string>

namespace tobarine {

struct QsoRecord {
  // As the log has them, in the order of the Hamlog CSV columns.
  std::string call;
  std::string date;     // "yy/mm/dd"
  std::string time;     // "hh:mm" and the zone letter "J" or "U"
  std::string his_rst;  // report sent
  std::string my_rst;   // report received
  std::string freq;     // MHz
  std::string mode;
  std::string code;  // JCC/JCG number or Hamlog's DX code
  std::string grid;
  std::string qsl;  // three characters: route, sent mark, received mark
  std::string name;
  std::string qth;
  std::string rmks1;
  std::string rmks2;

  // Derived on the way.
  std::string qso_date;   // yyyymmdd
  std::string time_on;    // hhmm and the zone letter
  std::string band;       // ADIF band name
  std::string adif_mode;  // ADIF's name of the mode
  std::string dxcc;       // entity number
  std::string jcc;
  std::string jcg;
  std::string state;  // two-letter code of a US state
  std::string iota;
  std::string qsl_via;
  std::string qsl_sent;  // "Y" or "N"
  std::string qsl_rcvd;  // "Y" or "N"
  std::string comment;

  // Read from ADIF only.
  std::string adif_freq;  // FREQ as it stands, MHz
  std::string age;
  std::string cqz;    // "CQZ:" and the zone
  std::string ituz;   // "ITUZ:" and the zone
  std::string cnty;   // "CNTY:" and the county
  std::string date8;  // "YYYY/MM/DD", from a date whose length was written as 8
  std::string time6;  // "HH:MM", from a time whose length was written as 6
  std::string section;
  std::string srx;  // serial number received
  std::string stx;  // serial number sent
  std::string operator_call;
  std::string n1mm_exchange1;
  std::string n1mm_points;
  std::string n1mm_radio_nr;
  std::string station_call;  // our own
  std::string contest_id;

  // Set by the band rules when ADIF becomes Hamlog CSV.
  std::string band_remark;      // "Band=" and the band table's keyword
  std::string band_remark_pos;  // "1" to "4"
};

}  // namespace tobarine
