#include <runsieve/core/scan/RunSet.h>

#include <algorithm>
#include <stdexcept>

namespace runsieve {

namespace {

void checkSizes(std::size_t a, std::size_t b)
{
  if (a != b) throw std::invalid_argument("sets of runs of two different scans");
}

} // namespace

std::size_t RunSet::count() const
{
  return static_cast<std::size_t>(std::count(marks.begin(), marks.end(), 1));
}

std::vector<std::size_t> RunSet::members() const
{
  std::vector<std::size_t> found;
  for (std::size_t run = 0; run < marks.size(); ++run)
    if (marks[run] != 0) found.push_back(run);
  return found;
}

RunSet& RunSet::operator&=(RunSet const& other)
{
  checkSizes(runs(), other.runs());
  for (std::size_t run = 0; run < marks.size(); ++run) marks[run] &= other.marks[run];
  return *this;
}

RunSet& RunSet::operator|=(RunSet const& other)
{
  checkSizes(runs(), other.runs());
  for (std::size_t run = 0; run < marks.size(); ++run) marks[run] |= other.marks[run];
  return *this;
}

RunSet& RunSet::operator-=(RunSet const& other)
{
  return *this &= other.complement();
}

RunSet RunSet::complement() const
{
  RunSet others(*this);
  for (unsigned char& mark : others.marks) mark = mark == 0 ? 1 : 0;
  return others;
}

} // namespace runsieve
