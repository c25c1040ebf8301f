#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QString>
#include <QXmlStreamReader>

#include <string>
#include <vector>

namespace runsieve::test {

/// The texts of a document, in the order in which they were painted.
inline std::vector<std::string> svgTexts(std::string const& path)
{
  QFile file(QString::fromStdString(path));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
  QXmlStreamReader reader(&file);
  std::vector<std::string> texts;
  while (!reader.atEnd())
    if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == "text")
      texts.push_back(reader.readElementText().trimmed().toStdString());
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
  return texts;
}

} // namespace runsieve::test
