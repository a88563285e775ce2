#include "options.h"

#include <gtest/gtest.h>

using vireonix::host::helpText;
using vireonix::host::Options;
using vireonix::host::parseOptions;
using vireonix::host::Theme;
using vireonix::host::UsageError;

namespace {

Options optionsOf(const std::vector<std::string_view>& arguments) {
  const auto parsed = parseOptions(arguments);
  EXPECT_TRUE(std::holds_alternative<Options>(parsed));
  return std::holds_alternative<Options>(parsed) ? std::get<Options>(parsed) : Options{};
}

std::string errorOf(const std::vector<std::string_view>& arguments) {
  const auto parsed = parseOptions(arguments);
  const auto* error = std::get_if<UsageError>(&parsed);
  return error == nullptr ? "" : error->message;
}

} // namespace

TEST(HostOptions, WithoutArgumentsTheWindowIsModalAndEnglish) {
  const Options options = optionsOf({});
  EXPECT_TRUE(options.modal);
  EXPECT_EQ(options.language, "en");
  EXPECT_EQ(options.workspace, "");
  EXPECT_EQ(options.bundle, "");
  EXPECT_EQ(options.theme, Theme::Light);
}

TEST(HostOptions, EveryOptionIsRead) {
  const Options options = optionsOf(
      {"-workspace", "/w", "-language", "pt-BR", "-bundle", "b", "-modal", "NO", "-theme", "dark"});
  EXPECT_EQ(options.workspace, "/w");
  EXPECT_EQ(options.language, "pt-BR");
  EXPECT_EQ(options.bundle, "b");
  EXPECT_FALSE(options.modal);
  EXPECT_EQ(options.theme, Theme::Dark);
}

TEST(HostOptions, TheLastOfTwoEqualOptionsCounts) {
  EXPECT_EQ(optionsOf({"-language", "de", "-language", "fr"}).language, "fr");
}

TEST(HostOptions, HelpWinsOverWhatFollows) {
  EXPECT_TRUE(optionsOf({"-help", "-nonsense"}).help);
  EXPECT_NE(helpText().find("-workspace FOLDER"), std::string_view::npos);
}

TEST(HostOptions, WhatIsWrongIsSaidInOneLineThatNamesIt) {
  EXPECT_NE(errorOf({"-nonsense"}).find("-nonsense"), std::string::npos);
  EXPECT_NE(errorOf({"word"}).find("word"), std::string::npos);
  EXPECT_NE(errorOf({"-workspace"}).find("-workspace needs a folder"), std::string::npos);
  EXPECT_NE(errorOf({"-workspace", ""}).find("-workspace"), std::string::npos);
  EXPECT_NE(errorOf({"-modal", "maybe"}).find("YES or NO"), std::string::npos);
  EXPECT_NE(errorOf({"-language", "../x"}).find("-language"), std::string::npos);
  EXPECT_NE(errorOf({"-theme", "pink"}).find("light or dark"), std::string::npos);
}
