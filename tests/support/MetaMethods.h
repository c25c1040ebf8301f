#pragma once

#include <QMetaMethod>
#include <QMetaObject>

#include <string>
#include <vector>

namespace runsieve::test {

/// The signals and slots that a class adds, in the order of its meta table, as "slot move(int x)".
inline std::vector<std::string> metaMethods(QMetaObject const& meta)
{
  std::vector<std::string> found;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
    QMetaMethod const method = meta.method(i);
    std::string text = method.methodType() == QMetaMethod::Signal ? "signal "
                       : method.methodType() == QMetaMethod::Slot ? "slot "
                                                                  : "other ";
    text += method.name().toStdString() + '(';
    for (int p = 0; p < method.parameterCount(); ++p)
      text += (p == 0 ? "" : ", ") + method.parameterTypes()[p].toStdString() + ' ' +
              method.parameterNames()[p].toStdString();
    found.push_back(text + ')');
  }
  return found;
}

} // namespace runsieve::test
