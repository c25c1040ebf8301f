#pragma once

#include "DocumentScene.h"
#include "TestSettings.h"

#include "app/explorer/session/SessionFile.h"
#include "app/explorer/session/SessionLoader.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fstream>
#include <iomanip>

namespace runsieve::test {

/// The text of a scan of lines as a file.
inline QByteArray lineScanText(std::size_t runs = 40, double offset = 0.0)
{
  std::ostringstream text;
  text << std::setprecision(17) << "run,time,A,B,k0,k1,k2\n";
  for (std::size_t run = 0; run < runs; ++run)
    for (int t = 0; t <= 10; ++t)
      text << run + 1 << ',' << t << ',' << scattered(0, run) + offset << ',' << scattered(1, run) * t / 10.0
           << ',' << scattered(0, run) + offset << ',' << scattered(1, run) << ',' << scattered(2, run)
           << '\n';
  return QByteArray::fromStdString(text.str());
}

/// A document with a scan from a file, in a folder of its own.
struct SessionScene : testing::Test
{
  QTemporaryDir folder;
  QString data = folder.filePath("scan.csv");
  app::Document document;
  app::SessionLoader loader{document};
  int opened = 0;
  QStringList notes;       ///< of opened()
  QStringList differences; ///< of differs()
  QStringList failures;
  QStringList missing;

  SessionScene()
  {
    useTestSettings();
    write(data, lineScanText());
    QObject::connect(&loader, &app::SessionLoader::opened, &document,
                     [this](app::Session const&, QString const&, QStringList const& told) {
                       ++opened;
                       notes = told;
                     });
    QObject::connect(&loader, &app::SessionLoader::differs, &document,
                     [this](QStringList const& lines) { differences = lines; });
    QObject::connect(&loader, &app::SessionLoader::failed, &document,
                     [this](QString const& message) { failures << message; });
    QObject::connect(&loader, &app::SessionLoader::dataMissing, &document,
                     [this](QString const&, QString const& where) { missing << where; });
  }

  static void write(QString const& path, QByteArray const& text)
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  static QByteArray read(QString const& path)
  {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

  /// With what the reader must be told: output A never changes within a run.
  static app::Session sessionOfData()
  {
    app::Session session;
    session.read.outputs = {"A"};
    return session;
  }

  /// Opens the data as they are, without a session.
  void openData()
  {
    loader.open(sessionOfData(), data);
    ASSERT_TRUE(waitFor([this] { return document.isOpen() && !loader.isBusy(); }));
    opened = 0;
  }

  void openSession(QString const& path)
  {
    const int before = opened;
    loader.open(path);
    ASSERT_TRUE(waitFor([&] { return opened > before && !loader.isBusy(); }));
  }

  /// Makes something of everything that a session keeps.
  void makeWork()
  {
    document.change("All", [this](app::State& state) {
      state.gates = {{"High \"A\"\nin the middle", gateOnA(0.5, 1.0), true},
                     {"off", gateOnA(0.9, 1.0), false},
                     {"\xce\xb1 \xe2\x89\xa5 1", gateOnA(0.1, 0.95), true}};
      state.join = GateJoin::Any;
      RunSet runs(document.scan().runs.size());
      for (std::size_t run : {0, 1, 2, 3, 7, 20, 21}) runs.set(run);
      state.sets = {{"my, \"set\"", runs, 3, false, "typed"}};
      state.method.thresholds = {0.01, 0.25};
      state.method.adjustment = Adjustment::Holm;
      state.method.permutations = 200;
      state.method.mostPermutations = 400;
      state.method.seed = 18446744073709551615u;
      state.method.gatesTried = 3;
      app::ViewState& view = state.view;
      view.outputs = {1, 0};
      view.logOutputs[1] = true;
      view.outputRanges[0] = {-0.5, 2.5};
      view.timeRange = app::TypedRange{1.0, 9.0};
      view.runsLook = app::RunsLook::WholeBands;
      view.focus = app::Focus::Faded;
      view.parameterLook = app::ParameterLook::Densities;
      view.logParameters[2] = false;
    });
    document.pin({4, 5, 9});
  }
};

} // namespace runsieve::test
