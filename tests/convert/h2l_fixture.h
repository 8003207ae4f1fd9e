// A contact of a Hamlog log and the runs to ADIF, for tests.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "convert/h2l.h"
#include "tables.h"
#include "test_folder.h"
#include "text/cp932.h"
#include "text/strings.h"

namespace tobarine {

// The columns of a contact, with a plain contact's values where a test says nothing.
struct HamlogContact {
  std::string call = "JA1ABC", date = "24/05/01", time = "21:05J", freq = "7.025", mode = "SSB",
              code = "1001", grid, qsl = "J**", name, qth, rmks1, rmks2;

  std::string line() const {
    std::string text;
    for (const std::string& column : {call, date, time, std::string("59"), std::string("57"), freq,
                                      mode, code, grid, qsl, name, qth, rmks1, rmks2}) {
      text += '"' + column + "\",";
    }
    return text + "\"0\"\r\n";
  }
};

class H2l : public ::testing::Test {
 protected:
  // The UTF-8 text of the records written for a log.
  std::string run(AdifTarget target, const std::string& log) {
    const H2lJob job{folder_.text("in.csv", log), folder_ / "out.adi", options_};
    report_ = target == AdifTarget::kEqsl
                  ? run_eqsl(job, delivered<ConversionTables>(), delivered<CallTables>(), {})
                  : run_h2l(job, delivered<ConversionTables>(), delivered<CallTables>(), {});
    const std::string text = from_cp932(TestFolder::bytes_of(job.output));
    return text.substr(text.find("<EOH>") + 9);
  }
  std::string logger32(const HamlogContact& c) { return run(AdifTarget::kLogger32, c.line()); }
  std::string eqsl(const HamlogContact& c) { return run(AdifTarget::kEqsl, c.line()); }

  // The value of a tag in the Logger32 record of a contact; "-" when the tag is not there.
  std::string tag(const HamlogContact& c, const std::string& name) {
    const std::string text = logger32(c);
    const std::size_t at = text.find("<" + name + ":");
    if (at == std::string::npos) return "-";
    const std::string value = text.substr(text.find('>', at) + 1);
    return std::string(trim(value.substr(0, value.find_first_of("<\r"))));
  }

  // The text of the only finding of a kind.
  std::string only(FindingKind kind) const {
    std::string text = "not one";
    for (const Finding& finding : report_.findings.kept()) {
      if (finding.kind == kind && told(kind) == 1) text = finding.text;
    }
    return text;
  }
  std::size_t told(FindingKind kind) const { return report_.findings.count(kind); }

  TestFolder folder_;
  H2lOptions options_;
  ConversionReport report_;
};

}  // namespace tobarine
