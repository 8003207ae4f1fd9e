// What the commands ask of the window around them. A test supplies its own.
#pragma once

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/start_up.h"

namespace tobarine {

// A question for a file.
struct FileQuestion {
  std::string title;
  std::string description;            // of the files
  std::vector<std::string> patterns;  // "*.csv"
};

// A question with a button for each answer, and 「やめる」 beside them.
struct Choice {
  std::string title;
  std::string text;
  std::vector<std::string> answers;
};

class Shell {
 public:
  virtual ~Shell() = default;

  virtual std::optional<std::filesystem::path> choose_file(const FileQuestion& question) = 0;

  // A file to write, whether it is there or not; `suggested` is what stands in the dialog.
  virtual std::optional<std::filesystem::path> choose_output(
      const FileQuestion& question, const std::filesystem::path& suggested) = 0;

  // The index of the answer; nothing: the user wants none of it.
  virtual std::optional<std::size_t> ask(const Choice& choice) = 0;

  enum class Icon { kInformation, kCritical };
  virtual void show_message(Icon icon, const MessageBox& message) = 0;

  virtual std::tm now() = 0;  // local time

  // The controls have changed.
  virtual void mirror() = 0;

  // Called now and then during a run; handles what the user does meanwhile. False: the user wants
  // the run to stop.
  virtual bool keep_going() = 0;

  // `line` is selected, counted from 1; 0: none.
  virtual void open_viewer(const std::filesystem::path& file, std::size_t line) = 0;
  virtual void open_editor(const std::filesystem::path& file) = 0;
  virtual void open_report() = 0;
  virtual void open_zlog_window() = 0;

  // Runs `work` beside the window and then, in the window's own thread, what `work` returned. Work
  // touches nothing that the window or its commands own.
  using Finish = std::function<void()>;
  virtual void in_background(std::function<Finish()> work) = 0;

  virtual void quit() = 0;
};

}  // namespace tobarine
