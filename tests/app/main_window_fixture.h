// What the tests of the main window's commands share: a program folder and a window over it, whose
// shell answers by itself.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

#include "app/main_window.h"
#include "app/test_shell.h"
#include "paths.h"
#include "test_folder.h"

namespace tobarine {

namespace fs = std::filesystem;

class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() {
    fs::copy(delivered_folder(), home());
    start();
  }
  fs::path home() const { return folder_ / "home"; }
  void start() {
    window_.reset();  // gives its trace log back
    window_.emplace(start_up({home(), "", shell_.now()}), home(), shell_);
    window_->load();
  }
  MainControls& see() { return window_->controls; }
  void open(std::string_view command, const fs::path& file) {
    shell_.files.push_back(file);
    window_->command(command);
  }
  fs::path sample(const std::string& name) {
    fs::copy(fs::path(samples_folder()) / name, folder_ / name,
             fs::copy_options::overwrite_existing);
    return folder_ / name;
  }
  Settings saved() const { return read_settings(home() / "Tobarine.ini"); }
  // Which of the three conversions can be chosen: "H", "L" or "", with buttons and tools agreeing.
  std::string can_convert() {
    EXPECT_EQ(see().cmdH2L.enabled, see().tool("変換 H2L").enabled);
    EXPECT_EQ(see().cmdeqsl.enabled, see().tool("eQSL").enabled);
    EXPECT_EQ(see().cmdL2H.enabled, see().tool("変換 L2H").enabled);
    EXPECT_EQ(see().cmdH2L.enabled, see().cmdeqsl.enabled);
    return std::string(see().cmdH2L.enabled ? "H" : "") + (see().cmdL2H.enabled ? "L" : "");
  }

  TestFolder folder_;
  TestShell shell_;
  std::optional<MainWindow> window_;
};

}  // namespace tobarine
