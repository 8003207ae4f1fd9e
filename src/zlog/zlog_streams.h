// Today's zLog logs as sources and sinks of neutral contacts.
#pragma once

#include <filesystem>
#include <optional>
#include <utility>

#include "log/contact_stream.h"
#include "zlog/zcsv_reader.h"
#include "zlog/zcsv_writer.h"
#include "zlog/zlog_contact.h"
#include "zlog/zlox_reader.h"
#include "zlog/zlox_writer.h"

namespace tobarine {

// What becomes of contacts that the operator struck out.
enum class Invalid { kLeaveOut, kKeep };

// `Reader`: ZloxReader or ZcsvReader.
template <typename Reader>
class ZlogSource : public ContactSource {
 public:
  ZlogSource(Reader reader, ZlogHead head, Invalid invalid)
      : reader_(std::move(reader)), head_(std::move(head)), invalid_(invalid) {}

  bool next(Contact& contact, FindingLog& findings) override {
    while (reader_.next(qso_, findings)) {
      if (qso_.invalid && invalid_ == Invalid::kLeaveOut) {
        findings.add(FindingKind::kLeftOutInvalid, reader_.number(), qso_.call, "");
        continue;
      }
      contact_from_zlog(qso_, head_, contact);
      contact.origin.line = reader_.number();
      return true;
    }
    return false;
  }
  Done done() const override { return {reader_.file().bytes_read(), reader_.file().size()}; }

 private:
  Reader reader_;
  ZlogHead head_;
  Invalid invalid_;
  ZlogQso qso_;
};

class ZloxSink : public ContactSink {
 public:
  // The file is created, with the head that its first contact gives, when that comes.
  ZloxSink(std::filesystem::path path, ZloxWriter::Form form, Zone zone, KeepRule rule = {});

  bool put(const Contact& contact, FindingLog& findings) override;
  void finish() override;  // of a log without contacts the file is a head

 private:
  void open(ZlogHead head, FindingLog& findings);

  std::filesystem::path path_;
  ZloxWriter::Form form_;
  Zone zone_;
  KeepRule rule_;
  std::optional<ZlogHead> head_;
  std::optional<ZloxWriter> writer_;
  ZlogQso qso_;
};

class ZcsvSink : public ContactSink {
 public:
  // The file stays the caller's, who closes it.
  ZcsvSink(OutputFile& file, Zone zone) : writer_(file, zone) {}

  bool put(const Contact& contact, FindingLog& findings) override;
  void finish() override {}

 private:
  ZcsvWriter writer_;
  bool head_told_ = false;  // a CSV has no place for one
  ZlogQso qso_;
};

}  // namespace tobarine
