#pragma once

#include <QGuiApplication>

#include <memory>

namespace runsieve::app {

/// What fonts need: an application, which needs no display. Null if there is one already. Qt's complaints
/// about folders of a desktop session that is not there are left out.
[[nodiscard]] std::unique_ptr<QGuiApplication> offscreenApplication();

} // namespace runsieve::app
