#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <string>
#include <vector>

namespace runsieve::test {

inline QString programPath()
{
  return RUNSIEVE_BINARY_DIR "/bin/runsieve";
}

/// How a process ended and what it has printed.
struct Ended
{
  int status = -1;
  std::string out;
  std::string err;
};

/// Starts a process and waits for its end.
inline Ended runProcess(QProcess& process, QString const& path, QStringList const& words)
{
  constexpr int patience = 60000; // milliseconds
  process.start(path, words);
  if (!process.waitForFinished(patience)) {
    ADD_FAILURE() << path.toStdString() << ": " << process.errorString().toStdString();
    process.kill();
    process.waitForFinished();
    return {};
  }
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << "ended by a signal";
  return {process.exitCode(), process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

/// Runs the program with these words, as a shell does.
inline Ended runProgram(std::vector<std::string> const& words)
{
  QStringList list;
  for (std::string const& word : words) list << QString::fromStdString(word);
  QProcess process;
  return runProcess(process, programPath(), list);
}

} // namespace runsieve::test
