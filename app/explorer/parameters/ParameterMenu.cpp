#include "app/explorer/parameters/ParameterMenu.h"

#include "app/explorer/charts/Theme.h"
#include "app/explorer/parameters/ParameterSpans.h"

#include <QAction>
#include <QMenu>

namespace runsieve::app {

namespace {

/// A name in a menu: short, and without a shortcut where it holds an ampersand.
QString menuText(std::string const& name, QMenu const& menu)
{
  constexpr double most = 220.0;
  return elided(QString::fromStdString(name), menu.font(), most).replace('&', "&&");
}

void addAxisActions(QMenu& menu, ParameterRuns const& runs, std::size_t parameter)
{
  Document& document = runs.ofDocument();
  QAction* logarithmic = menu.addAction("&Logarithmic axis");
  logarithmic->setCheckable(true);
  logarithmic->setChecked(runs.isLogarithmic(parameter));
  logarithmic->setEnabled(runs.spread(parameter).allowsLogarithm());
  QObject::connect(logarithmic, &QAction::triggered, &document, [&document, parameter](bool on) {
    document.change(on ? "Logarithmic axis" : "Linear axis",
                    [&](State& state) { state.view.logParameters[parameter] = on; });
  });
  QAction* automatic = menu.addAction("Axis as the values are &spread");
  automatic->setEnabled(document.state().view.logParameters.count(parameter) > 0);
  QObject::connect(automatic, &QAction::triggered, &document, [&document, parameter] {
    document.change("Axis as the values are spread",
                    [&](State& state) { state.view.logParameters.erase(parameter); });
  });
}

void addGateActions(QMenu& menu, Document& document, std::size_t parameter)
{
  ParameterSpans spans = spansOf(document);
  for (ParameterSpan const& span : spans[parameter]) {
    if (span.gate >= document.state().gates.size()) continue;
    NamedGate const& gate = document.state().gates[span.gate];
    menu.addSeparator();
    QAction* toggle =
        menu.addAction(QString(gate.on ? "Switch %1 off" : "Switch %1 on").arg(menuText(gate.name, menu)));
    QObject::connect(toggle, &QAction::triggered, &document, [&document, index = span.gate] {
      document.change("Switch gate", [&](State& state) { state.gates[index].on = !state.gates[index].on; });
    });
    QAction* remove = menu.addAction(QString("Delete %1").arg(menuText(gate.name, menu)));
    QObject::connect(remove, &QAction::triggered, &document, [&document, index = span.gate] {
      document.change("Delete gate", [&](State& state) {
        state.gates.erase(state.gates.begin() + static_cast<std::ptrdiff_t>(index));
      });
    });
  }
}

} // namespace

void fillParameterMenu(QMenu& menu, ParameterRuns const& runs, std::size_t parameter)
{
  Document& document = runs.ofDocument();
  if (!document.scan().parameters[parameter].isText()) addAxisActions(menu, runs, parameter);
  addGateActions(menu, document, parameter);
}

} // namespace runsieve::app
