#include <runsieve/core/read/ForeignFormats.h>

#include <array>

namespace runsieve {

namespace {

using namespace std::string_view_literals;

struct Signature
{
  std::string_view start;  ///< how the file begins
  std::string_view within; ///< a text among its first bytes; empty if the start tells enough
  char const* text;
};

constexpr std::size_t firstBytes = 4096;

// Zip files hold the name of their first file near the start.
constexpr std::array<Signature, 17> signatures = {{
    {"PK\3\4"sv, "[Content_Types].xml"sv, "an Excel workbook; save the sheet as CSV or tab separated text"},
    {"PK\3\4"sv, "xl/workbook"sv, "an Excel workbook; save the sheet as CSV or tab separated text"},
    {"PK\3\4"sv, "opendocument.spreadsheet"sv,
     "an OpenDocument spreadsheet; save the sheet as CSV or tab separated text"},
    {"PK\3\4"sv, "manifest.xml"sv,
     "a COMBINE archive; simulate it first, and open the reports.h5 of the results"},
    {"\xD0\xCF\x11\xE0"sv, ""sv, "an Excel workbook; save the sheet as CSV or tab separated text"},
    {"MATLAB 5.0 MAT-file"sv, ""sv,
     "a MATLAB file of version 5; save it with save(..., '-v7.3') and name the array with --dataset, or "
     "write a "
     "table with writetable"},
    {"PAR1\x15"sv, ""sv, "a Parquet file; write it as CSV, with pandas: read_parquet(FILE).to_csv(...)"},
    {"ARROW1"sv, ""sv, "an Arrow file; write it as CSV, with pandas: read_feather(FILE).to_csv(...)"},
    {"RDX2\n"sv, ""sv, "an R workspace; write the data frame with write.csv"},
    {"RDX3\n"sv, ""sv, "an R workspace; write the data frame with write.csv"},
    {"X\n\0\0"sv, ""sv, "an R object (.rds); write the data frame with write.csv"},
    {"<?xml"sv, "<sbml"sv, "an SBML model; simulate it, and open what the simulator writes"},
    {"<?xml"sv, "<sedML"sv, "a SED-ML description; run it, and open the reports.h5 of the results"},
    {"<?xml"sv, "COPASI"sv, "a COPASI model; run its scan, and open the report that COPASI writes"},
    {"<?xml"sv, ""sv, "an XML file, not a table"},
    {"%PDF-"sv, ""sv, "a PDF document, not a table"},
    {"\x89PNG"sv, ""sv, "a picture, not a table"},
}};

} // namespace

std::string foreignFormat(std::string_view bytes)
{
  std::string_view const start = bytes.substr(0, firstBytes);
  for (Signature const& signature : signatures) {
    bool const begins = start.substr(0, signature.start.size()) == signature.start;
    if (begins && start.find(signature.within) != std::string_view::npos) return signature.text;
  }
  return {};
}

} // namespace runsieve
