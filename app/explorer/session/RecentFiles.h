#pragma once

#include <QString>
#include <QStringList>

namespace runsieve::app {

/// Files that were opened last, the newest first, kept in the settings of the program.
class RecentFiles
{
public:
  static constexpr int most = 10;

  /// Those that exist.
  [[nodiscard]] static QStringList list();
  /// Puts a file in front.
  static void add(QString const& path);
  static void clear();
  /// What files are called in a list of them: their names, with the folder where two have the same.
  [[nodiscard]] static QStringList namesOf(QStringList const& files);
};

} // namespace runsieve::app
