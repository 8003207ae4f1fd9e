#include "app/window_arguments.h"

#include <gtest/gtest.h>

#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

WindowArguments parse(std::vector<std::string> words) {
  words.insert(words.begin(), "tobarine");
  return parse_window_arguments(words);
}

TEST(WindowArguments, NameALogAndAFolder) {
  EXPECT_TRUE(parse({}).problem.empty() && parse({}).log.empty() && parse({}).home.empty());
  const WindowArguments both = parse({"--home", "表", "ログ.csv"});
  EXPECT_EQ(path_text(both.home), "表");
  EXPECT_EQ(path_text(both.log), "ログ.csv");
  EXPECT_EQ(parse({"--home=a b", "x.adi"}).home, "a b");
  EXPECT_EQ(parse({"--", "--help"}).log, "--help");  // a file of that name
  EXPECT_TRUE(parse({"--", "--help"}).answer.empty());
  EXPECT_TRUE(contains(parse({"-h"}).answer, "--home"));
  EXPECT_TRUE(parse({"--version"}).answer.starts_with("Tobarine "));
}

TEST(WindowArguments, WrongOnesAreNamed) {
  EXPECT_TRUE(contains(parse({"--hom", "x"}).problem, "オプション --hom はありません"));
  EXPECT_TRUE(contains(parse({"--home"}).problem, "--home の後に場所"));
  EXPECT_TRUE(contains(parse({"--home="}).problem, "--home の後に場所"));
  EXPECT_TRUE(contains(parse({"--homes=x"}).problem, "オプション --homes=x はありません"));
  EXPECT_TRUE(contains(parse({"a.csv", "b.csv"}).problem, "b.csv"));
  EXPECT_FALSE(contains(parse({"-\x1B"}).problem, "\x1B"));
}

}  // namespace
}  // namespace tobarine
