#pragma once

#include <runsieve/core/inference/BoxPath.h>

namespace runsieve {

/// Widens a box where peeling has taken too much: pasting (Friedman and Fisher, Statistics and Computing 9,
/// 1999), the inverse of peeling. Each limit offers the runs that it alone keeps out and that lie next to it:
/// as many whole levels as have at most fraction x (runs in the box) runs, but at least one level; each
/// category that is left out offers itself. A limit that has nothing left behind it opens, and a parameter
/// without limits lets in the runs that miss its value. The paste that makes the density highest is done, of
/// equal ones that of most runs, as long as it lets in passing runs and the density does not fall. So the box
/// that comes out is at least as dense and covers at least as much.
///
/// Friedman and Fisher paste the box at the end of the peeling; here any box can be pasted, so that it is
/// done for the one that is chosen from the path.
/// \return nothing if asked to stop, between two pastes
/// \throw std::invalid_argument as checkSizes() and PeelOptions::check()
[[nodiscard]] std::optional<Box> pasted(BoxTable const& table, BoxSample const& sample, Box box,
                                        PeelOptions const& options = {}, StopAsked const& stopAsked = {});

} // namespace runsieve
