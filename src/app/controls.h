// What the main window shows, as values: the commands change it, the window mirrors it. Names are
// those that tests, style sheets and screen readers find.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tobarine {

// Of the 16-colour palette that the window's texts use.
enum class Colour { kBlack = 0, kLightBlue = 9, kLightRed = 12 };

struct Control {
  std::string text;  // caption or content, UTF-8; lines end with CR LF
  std::string tip;
  Colour colour = Colour::kBlack;
  bool enabled = true;
  bool checked = false;
  bool visible = true;
  bool read_only = false;
};

// Sizes of windows are given in twips, 15 to a device-independent pixel.
inline constexpr int kTwipsPerPixel = 15;
inline constexpr int kMostHeight = 10320;  // twips
inline constexpr int kMostWidth = 12960;   // twips

// Of a progress bar whose end is not known.
inline constexpr double kBusy = -1;

// A toolbar button: its key is its text; it does what the command does.
struct ToolButton {
  std::string_view key;
  std::string_view command;  // empty: none
};
inline constexpr std::array<ToolButton, 11> kToolButtons = {{
    {"開 hdb", "mnuOpen_hdb"},
    {"新 csv", "mnuOpen_csv"},
    {"z 開 all", "mnuOpen_zlog_all"},
    {"z 開 zlo", "mnuOpen_zlog_zlo"},
    {"開 adi", "mnuOpen_adi"},
    {"表示 i", "mnuDisp_in"},
    {"表示 o", "mnuDisp_out"},
    {"変換 H2L", "cmdH2L"},
    {"eQSL", "cmdeqsl"},
    {"変換 L2H", "cmdL2H"},
    {"終了", "cmdEnd"},
}};

// A menu or entry, in the order of the menu bar; `parent` is empty for what stands on the bar.
struct MenuEntry {
  std::string_view name;
  std::string_view caption;
  std::string_view parent;
};
std::span<const MenuEntry> menu_entries();

struct MainControls {
  MainControls();  // captions and tips; nothing is checked, everything enabled

  std::string title;
  int height = kMostHeight;  // twips
  int width = kMostWidth;
  double progress = 0;  // 0 .. 1, or kBusy

  Control cmdH2L, cmdeqsl, cmdL2H, cmdEnd, cmdOutput;
  Control cmdStop;                // enabled while a run goes on, when all else is not
  Control cmdReport;              // visible when there is a report to read
  std::array<Control, 17> Check;  // Check1 to Check16
  std::array<Control, 4> Option1;
  std::array<Control, 3> Option2;
  std::array<Control, 2> Option3;
  std::array<Control, 2> lblJ2U;  // what the time conversion does
  Control Command1, txtWas, txtYYYY;
  Control frameSelect, frameLeaveOut, frameFullWidth, frameWas, frameTime, frameZlog;
  Control lblInFile, lblOutFile, lblIn, lblInfo, lblMsg, lblConv, lblContest, lblZone, lblNotes;
  Control lblSaving;  // what is saved when; visible once there is something to say
  Control mnuDisp, mnuDisp_in, mnuDisp_out, mnuDisp_report;
  std::array<Control, kToolButtons.size()> Toolbar1;  // in the order of kToolButtons

  Control& tool(std::string_view key);  // of a key of kToolButtons
};

// Calls `visit(name, control)` for every control, so that a window can find what it mirrors.
// Members of arrays are named "Check9", "Option1_2" (counted from 0), toolbar buttons by their
// keys.
template <typename Controls, typename Visit>
void for_each_control(Controls& c, Visit visit) {
  visit("cmdH2L", c.cmdH2L);
  visit("cmdeqsl", c.cmdeqsl);
  visit("cmdL2H", c.cmdL2H);
  visit("cmdEnd", c.cmdEnd);
  visit("cmdOutput", c.cmdOutput);
  visit("cmdStop", c.cmdStop);
  visit("cmdReport", c.cmdReport);
  for (std::size_t i = 1; i < c.Check.size(); ++i) visit("Check" + std::to_string(i), c.Check[i]);
  const auto visit_all = [&visit](const std::string& name, auto& controls) {
    for (std::size_t i = 0; i < controls.size(); ++i) {
      visit(name + "_" + std::to_string(i), controls[i]);
    }
  };
  visit_all("Option1", c.Option1);
  visit_all("Option2", c.Option2);
  visit_all("Option3", c.Option3);
  visit_all("lblJ2U", c.lblJ2U);
  visit("Command1", c.Command1);
  visit("txtWas", c.txtWas);
  visit("txtYYYY", c.txtYYYY);
  visit("frameSelect", c.frameSelect);
  visit("frameLeaveOut", c.frameLeaveOut);
  visit("frameFullWidth", c.frameFullWidth);
  visit("frameWas", c.frameWas);
  visit("frameTime", c.frameTime);
  visit("frameZlog", c.frameZlog);
  visit("lblInFile", c.lblInFile);
  visit("lblOutFile", c.lblOutFile);
  visit("lblIn", c.lblIn);
  visit("lblInfo", c.lblInfo);
  visit("lblMsg", c.lblMsg);
  visit("lblConv", c.lblConv);
  visit("lblContest", c.lblContest);
  visit("lblZone", c.lblZone);
  visit("lblNotes", c.lblNotes);
  visit("lblSaving", c.lblSaving);
  visit("mnuDisp", c.mnuDisp);
  visit("mnuDisp_in", c.mnuDisp_in);
  visit("mnuDisp_out", c.mnuDisp_out);
  visit("mnuDisp_report", c.mnuDisp_report);
  for (std::size_t i = 0; i < kToolButtons.size(); ++i) {
    visit(std::string(kToolButtons[i].key), c.Toolbar1[i]);
  }
}

}  // namespace tobarine
