#include "app/store/PlotSettings.h"

#include "StoredPlots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <functional>
#include <limits>
#include <stdexcept>

namespace runsieve::test {
namespace {

using app::fromJson;
using app::PlotSettings;
using app::toJson;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Json = nlohmann::json;

PlotSettings unusualSettings()
{
  PlotSettings settings;
  settings.view = unusualView(7);
  settings.window = {-0.1, 1e-300, 1.0 / 3.0, 6.02214076e23, true};
  settings.stride = std::numeric_limits<std::uint64_t>::max();
  settings.bytes = 123456789012345;
  settings.checksum = 0xfedcba98;
  return settings;
}

void expectSame(PlotSettings const& a, PlotSettings const& b)
{
  EXPECT_EQ(membersOf(a.view), membersOf(b.view));
  EXPECT_EQ(membersOf(a.window), membersOf(b.window));
  EXPECT_EQ(a.stride, b.stride);
  EXPECT_EQ(a.bytes, b.bytes);
  EXPECT_EQ(a.checksum, b.checksum);
}

std::string complaint(std::string const& line)
{
  try {
    (void)fromJson(line);
    return "nothing";
  } catch (std::runtime_error const& error) {
    EXPECT_THAT(error.what(), Not(HasSubstr("\n")));
    return error.what();
  }
}

/// The line of unusual settings after a change, which puts `value` in the place of a member.
std::string with(std::string const& pointer, Json const& value)
{
  Json json = Json::parse(toJson(unusualSettings()));
  json[Json::json_pointer(pointer)] = value;
  return json.dump();
}

std::string without(std::string const& parent, std::string const& member)
{
  Json json = Json::parse(toJson(unusualSettings()));
  (parent.empty() ? json : json[parent]).erase(member);
  return json.dump();
}

TEST(PlotSettings, OfOthersAreReadWithoutMuchMemoryOrTime)
{
  EXPECT_THAT(complaint("{\"format\": \"runsieve plot\", \"x\": " + std::string(1000000, '[')),
              HasSubstr("nested too deeply"));
  std::string line = toJson(PlotSettings());
  line.pop_back();
  for (int i = 0; i < 300000; ++i) line += ",\"unknown " + std::to_string(i) + "\":0";
  expectSame(fromJson(line + '}'),
             PlotSettings()); // for hours if each member were looked up among all others
}

TEST(PlotSettings, ComeBackAsTheyWere)
{
  expectSame(fromJson(toJson(PlotSettings())), PlotSettings());
  expectSame(fromJson(toJson(unusualSettings())), unusualSettings());
}

TEST(PlotSettings, AreOneLineThatTellsTheFormat)
{
  for (PlotSettings const& settings : {PlotSettings(), unusualSettings()}) {
    EXPECT_THAT(toJson(settings), StartsWith(app::storedPlotMagic));
    EXPECT_THAT(toJson(settings), Not(HasSubstr("\n")));
  }
}

TEST(PlotSettings, AWindowThatIsNotValidIsNotWritten)
{
  EXPECT_FALSE(Json::parse(toJson(PlotSettings())).contains("window"));
  EXPECT_TRUE(Json::parse(toJson(unusualSettings())).contains("window"));
}

TEST(PlotSettings, EachMissingMemberOfTheViewTakesItsDefault)
{
  const Json view = Json::parse(toJson(PlotSettings())).at("view");
  ASSERT_EQ(view.size(), 9u);
  for (auto const& [name, value] : view.items()) {
    const PlotSettings settings = fromJson(without("view", name));
    EXPECT_EQ(Json::parse(toJson(settings)).at("view").at(name), value) << name;
    EXPECT_EQ(settings.stride, unusualSettings().stride);
  }
}

TEST(PlotSettings, AMissingViewOrWindowIsTheDefault)
{
  EXPECT_EQ(membersOf(fromJson(without("", "view")).view), membersOf(app::ViewOptions()));
  EXPECT_FALSE(fromJson(without("", "window")).window.valid);
}

TEST(PlotSettings, UnknownMembersArePassedOver)
{
  for (std::string const place : {"/future", "/view/future", "/dump/future"})
    for (Json const& value : {Json(1), Json("x"), Json(nullptr), Json::parse("{\"a\":[{}]}")})
      expectSame(fromJson(with(place, value)), unusualSettings());
}

TEST(PlotSettings, AnotherFormatIsRefused)
{
  EXPECT_THAT(complaint(with("/format", "runsieve picture")), HasSubstr("format"));
  EXPECT_NE(complaint(with("/format", 3)), "nothing");
  EXPECT_NE(complaint(without("", "format")), "nothing");
}

TEST(PlotSettings, ANewerVersionIsRefusedAndSaidSo)
{
  EXPECT_THAT(complaint(with("/version", 2)), HasSubstr("newer version"));
  EXPECT_THAT(complaint(with("/version", 1000000)), HasSubstr("newer version"));
}

TEST(PlotSettings, AVersionThatNoIntegerHoldsIsNewer)
{
  EXPECT_NE(complaint(with("/version", 4294967296LL)), "nothing");
  EXPECT_NE(complaint(with("/version", 4294967297LL)), "nothing") << "1 in 32 bits";
}

struct Wrong
{
  char const* member;
  std::vector<Json> values;
};

void expectRefused(std::vector<Wrong> const& cases)
{
  for (Wrong const& wrong : cases)
    for (Json const& value : wrong.values)
      EXPECT_NE(complaint(with(wrong.member, value)), "nothing") << wrong.member << " = " << value;
}

TEST(PlotSettings, ValuesOfWrongTypesAreRefused)
{
  const std::vector<Json> noNumbers = {"3", nullptr, Json::array(), Json::object()};
  const std::vector<Json> noSwitches = {1, 0, "true", nullptr, Json::array()};
  expectRefused({{"/version", noNumbers},
                 {"/stride", noNumbers},
                 {"/dump/bytes", noNumbers},
                 {"/dump/crc32", noNumbers},
                 {"/view/output", noNumbers},
                 {"/view/p_threshold", noNumbers},
                 {"/view/ks_threshold", noNumbers},
                 {"/view/density", noSwitches},
                 {"/view/common_scale", noSwitches},
                 {"/view/quantiles", noSwitches},
                 {"/view/log_axes", noSwitches},
                 {"/view/points", noSwitches},
                 {"/view", {1, "x", Json::array(), nullptr}},
                 {"/dump", {1, "x", Json::array(), nullptr}},
                 {"/window", {1, "x", Json::object(), nullptr, Json::parse("[1,2,3]")}},
                 {"/window/2", {"3", nullptr, Json::array()}}});
}

TEST(PlotSettings, TruthIsNoNumber)
{
  expectRefused({{"/version", {true}},
                 {"/stride", {true}},
                 {"/dump/bytes", {true}},
                 {"/dump/crc32", {true}},
                 {"/view/output", {true}},
                 {"/view/p_threshold", {true}},
                 {"/window/2", {true}}});
}

TEST(PlotSettings, ACountIsWholeAndNotNegative)
{
  expectRefused({{"/stride", {-1, 2.5, 1e300}},
                 {"/dump/bytes", {-1, 2.5}},
                 {"/dump/crc32", {-1, 2.5, 4294967296LL}},
                 {"/view/output", {-1, 0.5}}});
}

TEST(PlotSettings, AWindowHasFourEnds)
{
  expectRefused({{"/window", {Json::parse("[1,2,3,4,5]")}}});
}

TEST(PlotSettings, TextThatIsNoJsonIsRefused)
{
  for (std::string const text :
       {"", " ", "x", "{", "[]", "null", "42", "\"runsieve plot\"", "{}", "\xff\xfe", "Molecule: A,time"})
    EXPECT_NE(complaint(text), "nothing") << text;
  EXPECT_NE(complaint(toJson(unusualSettings()) + "x"), "nothing");
  EXPECT_NE(complaint(std::string(1000000, '[')), "nothing");
}

TEST(PlotSettings, ALineThatIsCutOffIsRefused)
{
  const std::string line = toJson(unusualSettings());
  for (std::size_t length = 0; length < line.size(); ++length)
    EXPECT_NE(complaint(line.substr(0, length)), "nothing") << length;
}

} // namespace
} // namespace runsieve::test
