#pragma once

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

namespace runsieve::test {

/// Settings and files of the tests lie apart from those of the user, and of tests that run at the same time.
inline void useTestSettings()
{
  static const QTemporaryDir home;
  qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path());
  QCoreApplication::setOrganizationName("runsieve-tests");
  QSettings().clear();
}

} // namespace runsieve::test
