#include <runsieve/charts/ChartText.h>

#include <QString>

namespace runsieve {

std::string chartText(std::string const& text)
{
  const QString decoded = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
  if (!decoded.contains(QChar(QChar::ReplacementCharacter))) return text;
  return QString::fromLatin1(text.data(), static_cast<int>(text.size())).toStdString();
}

} // namespace runsieve
