#include "LineScene.h"

#include "support/PdfText.h"

#include <runsieve/plot/PlotContainer.h>

#include <vtkIntArray.h>

#include <QFile>

#include <regex>
#include <set>

namespace runsieve::test {
namespace {

/// Lines of runs in a PDF: shapes, or an image if there are very many.
struct PdfPicture : LineScene
{
  static constexpr int many = 2001; ///< the fewest that are an image

  PdfPicture() : LineScene(500, 360, 0) {}

  /// The file as text, and what the user is told.
  std::string pdf()
  {
    view.render();
    const std::string path = folder.filePath("lines.pdf").toStdString();
    note = view.save(path);
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    packed = file.readAll().toStdString();
    return inflatedPdf(packed);
  }

  static int count(std::string const& text, std::string const& part)
  {
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
  }

  /// Segments of lines beyond those of axes and text.
  int segments(std::string const& text)
  {
    chart->ClearPlots();
    add(tableOf({0, 1}), true);
    return count(text, " l\n") - count(pdf(), " l\n");
  }

  /// What the first match of a pattern has in its groups, as numbers.
  static std::vector<double> numbers(std::string const& text, char const* pattern)
  {
    std::smatch match;
    if (!std::regex_search(text, match, std::regex(pattern))) return {};
    std::vector<double> found;
    for (std::size_t i = 1; i < match.size(); ++i) found.push_back(std::stod(match[i]));
    return found;
  }

  std::string note;
  std::string packed;
};

TEST_F(PdfPicture, RunsArePolylinesOfAHundredthOfAPoint)
{
  add(tableOf({0, 60}));
  const std::string text = pdf();
  EXPECT_EQ(note, "");
  EXPECT_EQ(count(text, "/SMask"), 0);
  EXPECT_FALSE(std::regex_search(text, std::regex("\\.\\d{3,} [ml]\n")));
  EXPECT_TRUE(std::regex_search(text, std::regex("\\.\\d\\d [ml]\n")));
  EXPECT_EQ(segments(text), 60 * (times - 1));
}

TEST_F(PdfPicture, CrossReferencesLeadToTheObjects)
{
  add(tableOf({0, many}));
  static_cast<void>(pdf());
  const std::size_t table = std::stoul(packed.substr(packed.rfind("startxref\n") + 10));
  ASSERT_EQ(packed.substr(table, 7), "xref\n0 ");
  const int objects = std::stoi(packed.substr(table + 7));
  const std::size_t entries = packed.find('\n', table + 5) + 1;
  for (int i = 1; i < objects; ++i) {
    const std::size_t place = std::stoul(packed.substr(entries + 20 * static_cast<std::size_t>(i), 10));
    EXPECT_EQ(packed.substr(place, packed.find('\n', place) - place), std::to_string(i) + " 0 obj");
  }
  EXPECT_EQ(numbers(packed, "/Size (\\d+)"), std::vector<double>{static_cast<double>(objects)});
}

TEST_F(PdfPicture, AHighlightedRunIsThereOnceHoweverManyOfItsRowsAreSelected)
{
  auto table = tableOf({0, 60});
  flag(table, [](int run) { return run == 7 ? 12 : 0; });
  add(table);
  const std::string text = pdf();
  EXPECT_EQ(segments(text), 60 * (times - 1)) << "and not below itself";
}

TEST_F(PdfPicture, AsManyRunsAsStayShapesAreShapes)
{
  add(tableOf({0, many - 1}));
  const std::string text = pdf();
  EXPECT_EQ(note, "");
  EXPECT_EQ(segments(text), (many - 1) * (times - 1));
}

TEST_F(PdfPicture, VeryManyRunsAreAnImageAndTheUserIsTold)
{
  add(tableOf({0, many}));
  const std::string text = pdf();
  EXPECT_NE(note.find("144 pixels per inch"), std::string::npos) << note;
  EXPECT_EQ(count(text, "/SMask"), 1);
  EXPECT_EQ(count(text, "/Runs0 Do\n"), 1);
  EXPECT_EQ(segments(text), 0);
}

TEST_F(PdfPicture, RunsInShadesAreAnImageSinceShapesHaveNone)
{
  vtkPlotLineSet* lines = add(tableOf({0, 60}));
  lines->SetDensityColors(vtkPlotLineSet::DENSITY_LOGARITHMIC);
  const std::string text = pdf();
  EXPECT_NE(note.find("144 pixels per inch"), std::string::npos) << note;
  EXPECT_EQ(count(text, "/Runs0 Do\n"), 1);
}

TEST_F(PdfPicture, TheImageLiesOverTheGridInTheFrameOfTheChart)
{
  vtkPlotLineSet* lines = add(tableOf({0, many}));
  lines->GetPen()->SetColor(200, 30, 60, 255);
  const std::string text = pdf();
  const std::vector<double> place = numbers(text, "q\n(\\S+) 0 0 (\\S+) (\\S+) (\\S+) cm\n/Runs0 Do");
  ASSERT_EQ(place.size(), 4u);
  int const* corner = chart->GetPoint1();
  EXPECT_NEAR(place[2], chart->GetPoint1()[0], 1.0);
  EXPECT_NEAR(place[3], chart->GetPoint1()[1], 1.0);
  EXPECT_NEAR(place[0], chart->GetPoint2()[0] - corner[0], 2.0);
  EXPECT_NEAR(place[1], chart->GetPoint2()[1] - corner[1], 2.0);
  const std::vector<double> size = numbers(
      text,
      "/Width (\\d+)\n/Height (\\d+)\n/ColorSpace \\[/Indexed[^\\]]*\\]\n/BitsPerComponent 8\n\n/SMask");
  EXPECT_EQ(size, (std::vector<double>{2.0 * place[0], 2.0 * place[1]}));
  EXPECT_NE(text.find("c81e3c>"), std::string::npos) << "the pen's colour";
  const std::size_t image = text.find("/Runs0 Do");
  const std::size_t grid = text.find("0.94902 0.94902 0.94902 RG");
  ASSERT_NE(grid, std::string::npos);
  EXPECT_LT(grid, image);
  EXPECT_EQ(text.find("0.00392157 0.996078"), text.rfind("0.00392157 0.996078")) << "the mark's colour";
  EXPECT_NE(text.find(" l\nS\n", image), std::string::npos) << "axes lie above";
}

/// The numbers of colours: as many as pixels, of as many colours as the palette has.
TEST_F(PdfPicture, PixelsOfTheImageAreNumbersOfItsColors)
{
  vtkPlotLineSet* lines = add(tableOf({0, many}));
  lines->SetDensityColors(vtkPlotLineSet::DENSITY_LOGARITHMIC);
  const std::string text = pdf();
  std::smatch match;
  ASSERT_TRUE(std::regex_search(
      text, match,
      std::regex(
          "/Width (\\d+)\n/Height (\\d+)\n/ColorSpace \\[/Indexed /DeviceRGB (\\d+) <([0-9a-f]*)>\\]")));
  const unsigned last = static_cast<unsigned>(std::stoi(match[3]));
  EXPECT_GT(last, 50U) << "shades";
  EXPECT_EQ(match[4].length(), 6 * (last + 1));
  const std::size_t begin = text.find("stream\n", static_cast<std::size_t>(match.position())) + 7;
  const std::string pixels = text.substr(begin, std::stoul(match[1]) * std::stoul(match[2]));
  EXPECT_EQ(text.substr(begin + pixels.size(), 7), "\nendobj");
  const auto numberOf = [](char pixel) { return static_cast<unsigned char>(pixel); };
  unsigned largest = 0;
  for (char const pixel : pixels) largest = std::max<unsigned>(largest, numberOf(pixel));
  EXPECT_EQ(largest, last);
}

TEST_F(PdfPicture, OpacitiesOfTheImageHave64StepsWithBothEnds)
{
  add(tableOf({0, many}));
  const std::string text = pdf();
  const std::size_t mask = text.find("/ColorSpace /DeviceGray");
  ASSERT_NE(mask, std::string::npos);
  const std::size_t begin = text.find("stream\n", mask) + 7;
  std::set<unsigned char> steps;
  for (const char opacity : text.substr(begin, text.find("\nendobj", begin) - begin))
    steps.insert(static_cast<unsigned char>(opacity));
  EXPECT_EQ(*steps.begin(), 0);
  EXPECT_EQ(*steps.rbegin(), 255);
  EXPECT_GT(steps.size(), 16U) << "smooth edges";
  EXPECT_LE(steps.size(), 64U);
}

TEST_F(PdfPicture, TheMarkOfAnImageIsNotDrawn)
{
  add(tableOf({0, many}));
  const std::string text = pdf();
  const std::size_t mark = text.find("0.00392157 0.996078");
  ASSERT_NE(mark, std::string::npos);
  const std::size_t next = text.find(" RG\n", text.find(" RG\n", mark) + 1);
  const std::string between = text.substr(mark, next - mark);
  EXPECT_EQ(count(between, " m\n") + count(between, " l\n"), 0) << between;
}

TEST_F(PdfPicture, TwoSetsAreTwoImages)
{
  add(tableOf({0, many}));
  add(tableOf({0, many}), false)->GetPen()->SetColor(0, 99, 0, 255);
  const std::string text = pdf();
  EXPECT_EQ(count(text, "/Runs0 Do\n"), 1);
  EXPECT_EQ(count(text, "/Runs1 Do\n"), 1);
  EXPECT_LT(text.find("/Runs0 Do\n"), text.find("/Runs1 Do\n"));
  EXPECT_EQ(count(text, "/SMask"), 2);
}

TEST_F(PdfPicture, TheWindowShowsTheSameAfterASave)
{
  add(tableOf({0, many}));
  const QImage before = picture();
  static_cast<void>(pdf());
  EXPECT_EQ(picture(), before);
}

TEST_F(PdfPicture, VeryManyRunsOfClustersAreAnImage)
{
  PlotContainer container(nullptr);
  container.chartXY = chart;
  auto table = vtkSmartPointer<vtkTable>::New();
  container.clusterLabels = vtkSmartPointer<vtkIntArray>::New();
  for (int run = 0; run < many; ++run) {
    table->AddColumn(makeColumn(std::to_string(run), std::vector<double>{wave(run, 0), wave(run, 20)}));
    container.clusterLabels->InsertNextValue(run % 3);
  }
  table->AddColumn(makeColumn("Time", std::vector<double>{0, times - 1.0}));
  container.clusterRunTable = table;
  container.drawClusterRuns();
  const std::string text = pdf();
  EXPECT_EQ(count(text, "/Runs0 Do\n"), 1);
  container.chartXY = nullptr;
  EXPECT_EQ(segments(text), 0);
}

} // namespace
} // namespace runsieve::test
