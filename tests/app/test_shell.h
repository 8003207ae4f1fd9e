// A shell for tests: it answers what the test has laid down, and remembers what it was asked.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "app/shell.h"

namespace tobarine {

class TestShell : public Shell {
 public:
  std::optional<std::filesystem::path> choose_output(
      const FileQuestion& question, const std::filesystem::path& suggested_file) override {
    suggested.push_back(suggested_file);
    return choose_file(question);
  }
  std::optional<std::filesystem::path> choose_file(const FileQuestion& question) override {
    asked.push_back(question);
    if (files.empty()) return std::nullopt;
    const std::filesystem::path file = files.front();
    files.pop_front();
    return file;
  }
  std::optional<std::size_t> ask(const Choice& choice) override {
    choices.push_back(choice);
    if (answers.empty()) return std::nullopt;
    const std::size_t answer = answers.front();
    answers.pop_front();
    return answer;
  }
  void show_message(Icon icon, const MessageBox& message) override {
    messages.push_back({(icon == Icon::kCritical ? "!" : "") + message.title, message.text});
  }
  std::tm now() override {
    std::tm time{};
    time.tm_year = 2026 - 1900;
    time.tm_mday = 1;
    return time;
  }
  void mirror() override { ++mirrored; }
  bool keep_going() override { return ++kept_going < stop_after; }
  void open_viewer(const std::filesystem::path& file, std::size_t /*line*/) override {
    viewed.push_back(file);
  }
  void open_editor(const std::filesystem::path& file) override { edited.push_back(file); }
  void open_report() override { ++reports; }
  void open_zlog_window() override { ++zlog_windows; }
  void in_background(std::function<Finish()> work) override { background.push_back(work); }
  void quit() override { ++quits; }

  std::deque<std::filesystem::path> files;  // that the user will choose; none: cancels
  std::vector<FileQuestion> asked;
  std::deque<std::size_t> answers;  // that the user will give; none: cancels
  std::vector<Choice> choices;
  std::vector<MessageBox> messages;  // "!" in front of the title: critical
  std::vector<std::filesystem::path> viewed, edited, suggested;
  std::vector<std::function<Finish()>> background;
  int mirrored = 0, kept_going = 0, stop_after = 1 << 30, reports = 0, zlog_windows = 0, quits = 0;
};

}  // namespace tobarine
