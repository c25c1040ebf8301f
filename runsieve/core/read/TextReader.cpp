#include <runsieve/core/read/TextReader.h>

#include <runsieve/core/read/Dialect.h>
#include <runsieve/core/read/Layouts.h>
#include <runsieve/core/read/StackedRows.h>
#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf16.h>

namespace runsieve {

namespace {

bool isBlank(std::string_view text)
{
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

CellTable readTextCells(ScanText const& text, ReadOptions const& options, std::string& converted,
                        ReadReport& report, Dialect& dialect)
{
  std::string_view bytes = text.bytes;
  bool mapped = text.mapped;
  if (isUtf16(bytes)) {
    converted = fromUtf16(bytes);
    bytes = converted;
    mapped = false;
    report.findings.push_back(
        {"the text was converted from UTF-16", "it begins with the mark of that encoding", false});
  }
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (bytes.substr(0, byteOrderMark.size()) == byteOrderMark) bytes.remove_prefix(byteOrderMark.size());
  constexpr std::size_t judged = std::size_t(1) << 20;
  if (isBlank(bytes.substr(0, judged))) throw ScanError(text.file, "the file is empty");

  dialect = findDialect(text.file, bytes, options, report.findings, text.hasNames);
  report.format = delimiterName(dialect.fields.delimiter) + " separated text";
  return readCells(text.file, bytes, dialect, options, mapped, report.findings);
}

CellTable readTextRows(ScanText const& text, ReadOptions const& options, std::string& converted,
                       ReadReport& report)
{
  Dialect dialect;
  CellTable table = readTextCells(text, options, converted, report, dialect);
  table = unmelted(std::move(table), options, report);
  table = unrolledTimes(std::move(table), options, report);
  table = unrolledRuns(std::move(table), options, report);
  return withoutTime(std::move(table), options, dialect.commentHeader && dialect.fields.delimiter == ' ',
                     report);
}

ScanFile readText(ScanText const& text, ReadOptions const& options)
{
  ScanFile result;
  std::string converted;
  CellTable table = readTextRows(text, options, converted, result.report);
  result.scan = scanOfRows(std::move(table), options, result.report);
  return result;
}

} // namespace runsieve
