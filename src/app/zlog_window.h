// The ADIF-to-zLog window's commands and state, without a window, as main_window.h has it for the
// main window.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/controls.h"
#include "app/main_window.h"
#include "convert/adif_to_zlog.h"

namespace tobarine {

struct ZlogControls {
  ZlogControls();  // captions

  double progress = 0;             // 0 .. 1
  std::array<Control, 14> Check;   // Check1 to Check13; some numbers are not in use
  std::array<Control, 3> Option2;  // the time conversion
  std::array<Control, 4> Combo;    // "1" or "2", the remarks for: comment, TX#, age, IOTA
  Control Text7;                   // the sent number
  Control cmdOpen, cmdConvert, cmdOutput;
  Control lblInFile, lblOutFile, lblIn, lblInfo, lblMsg, lblNotes;
  Control mnuCSV, mnuALL, mnuBack;
};

inline constexpr std::array<std::size_t, 10> kZlogChecks = {1, 2, 4, 5, 7, 8, 10, 11, 12, 13};
inline constexpr std::array<std::string_view, 4> kZlogCombos = {"Combo10", "Combo11", "Combo12",
                                                                "Combo13"};

// As for_each_control() of the main window.
template <typename Controls, typename Visit>
void for_each_zlog_control(Controls& c, Visit visit) {
  for (const std::size_t i : kZlogChecks) visit("Check" + std::to_string(i), c.Check[i]);
  for (std::size_t i = 0; i < c.Option2.size(); ++i) {
    visit("Option2_" + std::to_string(i), c.Option2[i]);
  }
  for (std::size_t i = 0; i < c.Combo.size(); ++i) visit(std::string(kZlogCombos[i]), c.Combo[i]);
  visit("Text7", c.Text7);
  visit("cmdOpen", c.cmdOpen);
  visit("cmdConvert", c.cmdConvert);
  visit("cmdOutput", c.cmdOutput);
  visit("lblInFile", c.lblInFile);
  visit("lblOutFile", c.lblOutFile);
  visit("lblIn", c.lblIn);
  visit("lblInfo", c.lblInfo);
  visit("lblMsg", c.lblMsg);
  visit("lblNotes", c.lblNotes);
  visit("mnuCSV", c.mnuCSV);
  visit("mnuALL", c.mnuALL);
  visit("mnuBack", c.mnuBack);
}

class ZlogWindow {
 public:
  // Shares settings, tables and the run's state with the main window, which must live as long.
  ZlogWindow(MainWindow& main, Shell& shell) : main_(main), shell_(shell) {}

  // Shows the settings as they are now; the main window changes them, too. What was typed or chosen
  // stays so while the program runs, even where the settings file keeps something else of it.
  void show_settings();

  void open();
  void open_file(const std::filesystem::path& file);
  void choose_output();
  void convert();
  void edit_csv();
  void edit_all();

  // The user has changed an option; each is saved at once.
  void check(std::size_t number, bool checked);
  void select_option2(std::size_t index);
  void choose_remarks(std::size_t combo, std::string_view remarks);  // index of kZlogCombos
  void edit_sent_number(std::string_view text);

  const std::filesystem::path& input() const { return input_; }
  bool running() const { return main_.running(); }
  const ConversionReport& report() const { return report_; }

  ZlogControls controls;

 private:
  void set(std::string_view control, std::string_view value);  // what the control shows
  void edit(std::string_view extension);
  void show_base(const std::filesystem::path& base);
  bool choose_base();  // false: the user does not
  void tell(const std::string& text);

  MainWindow& main_;
  Shell& shell_;
  std::filesystem::path input_;
  AdifReading adif_reading_ = AdifReading::kAsk;  // what the user has said for this input
  std::filesystem::path base_;                    // of the outputs' names
  std::string output_note_;                       // on them, while they are the input's
  AdifToZlogState state_;                         // what one run leaves to the next
  ConversionReport report_;                       // of the last run
};

}  // namespace tobarine
