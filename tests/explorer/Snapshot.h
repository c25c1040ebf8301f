#pragma once

#include "PaintRecorder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QDialog>
#include <QFontComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabBar>
#include <QTableView>
#include <QTextEdit>

namespace runsieve::test {

/// What a widget shows, in lines of text: all that can be seen, hovered or read out in it and in what it
/// holds. What widgets of the program paint themselves is told stroke by stroke.
class Snapshot
{
public:
  [[nodiscard]] static QStringList of(QWidget& widget)
  {
    Snapshot snapshot;
    snapshot.addWidget(widget, 0);
    return snapshot.lines;
  }
  /// The same without what widgets of the program paint themselves.
  [[nodiscard]] static QStringList layoutOf(QWidget& widget)
  {
    Snapshot snapshot;
    snapshot.paintings = false;
    snapshot.addWidget(widget, 0);
    return snapshot.lines;
  }
  [[nodiscard]] static QStringList of(Painting const& painting)
  {
    Snapshot snapshot;
    snapshot.addPainting(painting, 0);
    return snapshot.lines;
  }
  /// A menu with all below it.
  [[nodiscard]] static QStringList of(QList<QAction*> const& actions)
  {
    Snapshot snapshot;
    snapshot.addActions(actions, 0);
    return snapshot.lines;
  }

  /// How a widget behaves, as far as that is a property of its class.
  static QString manners(QWidget const& widget)
  {
    static const char* const names[] = {"minimum",
                                        "maximum",
                                        "singleStep",
                                        "decimals",
                                        "keyboardTracking",
                                        "wordWrap",
                                        "textFormat",
                                        "maxLength",
                                        "readOnly",
                                        "showGrid",
                                        "sortingEnabled",
                                        "alternatingRowColors",
                                        "textElideMode",
                                        "selectionMode",
                                        "selectionBehavior",
                                        "tabKeyNavigation",
                                        "editTriggers",
                                        "autoDefault",
                                        "default",
                                        "popupMode",
                                        "autoRaise",
                                        "alignment",
                                        "textInteractionFlags",
                                        "margin",
                                        "indent",
                                        "frameShape",
                                        "clearButtonEnabled",
                                        "flat",
                                        "checkable",
                                        "toolButtonStyle",
                                        "sizeGripEnabled",
                                        "modal",
                                        "acceptDrops",
                                        "mouseTracking",
                                        "dragDropMode",
                                        "horizontalScrollMode",
                                        "horizontalScrollBarPolicy",
                                        "widgetResizable",
                                        "editable",
                                        "minimumContentsLength",
                                        "insertPolicy",
                                        "openExternalLinks"};
    QString told = widget.focusPolicy() == Qt::NoFocus ? "" : " keys";
    if (widget.testAttribute(Qt::WA_SetCursor)) told += QString(" cursor %1").arg(widget.cursor().shape());
    for (char const* name : names) {
      const QVariant value = widget.property(name);
      if (!value.isValid()) continue;
      if (value.type() == QVariant::UserType) // an enumeration or flags, which not all builds can convert
        told += QString(" %1 %2").arg(name).arg(*static_cast<int const*>(value.constData()));
      else if (value.type() != QVariant::Bool)
        told += QString(" %1 %2").arg(name, number(value.toDouble()));
      else if (value.toBool())
        told += QString(" ") + name;
    }
    const QMargins around = widget.contentsMargins();
    if (qobject_cast<QLabel const*>(&widget) && !around.isNull())
      told += QString(" within %1 %2 %3 %4")
                  .arg(around.left())
                  .arg(around.top())
                  .arg(around.right())
                  .arg(around.bottom());
    if (auto const* table = qobject_cast<QTableView const*>(&widget))
      told += QString(" header%1%2%3")
                  .arg(table->horizontalHeader()->highlightSections() ? " highlights" : "",
                       table->horizontalHeader()->sectionsMovable() ? " moves" : "",
                       table->verticalHeader()->isVisible() ? " numbered" : "");
    return told;
  }

private:
  static constexpr double fine = 10.0; ///< numbers are told in tenths

  static QString number(double value) { return QString::number(std::round(value * fine) / fine + 0.0); }
  static QString place(QPointF const& at) { return number(at.x()) + ' ' + number(at.y()); }
  static QString place(QRectF const& box)
  {
    return place(box.topLeft()) + ' ' + number(box.width()) + " x " + number(box.height());
  }
  static QString color(QColor const& color) { return color.name(QColor::HexArgb); }
  static QString quoted(QString text) { return '"' + text.replace('\n', "\\n") + '"'; }
  static QString told(char const* what, QString const& text)
  {
    return text.isEmpty() ? QString() : QString(" %1 %2").arg(what, quoted(text));
  }

  void add(int depth, QString const& line) { lines << QString(2 * depth, ' ') + line; }

  /// Of an image its size, and the mean colours of a coarse grid.
  static QString pixels(QImage const& image)
  {
    constexpr int columns = 12;
    constexpr int rows = 8;
    QString told = QString("%1 x %2 ~").arg(image.width()).arg(image.height());
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column)
        told += meanColor(image, QRect(QPoint(column * image.width() / columns, row * image.height() / rows),
                                       QPoint((column + 1) * image.width() / columns - 1,
                                              (row + 1) * image.height() / rows - 1)));
    return told;
  }
  static QString meanColor(QImage const& image, QRect const& block)
  {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    for (int y = block.top(); y <= block.bottom(); ++y)
      for (int x = block.left(); x <= block.right(); ++x) {
        const QColor pixel = image.pixelColor(x, y);
        red += pixel.redF() * pixel.alphaF();
        green += pixel.greenF() * pixel.alphaF();
        blue += pixel.blueF() * pixel.alphaF() + (1.0 - pixel.alphaF()) / 2.0;
      }
    const double count = std::max(1, block.width() * block.height());
    return QColor::fromRgbF(red / count, green / count, std::min(1.0, blue / count)).name().mid(1);
  }

  /// Points as they are if they are few, else where they lie and their middle.
  static QString points(QPolygonF const& points)
  {
    constexpr int few = 6;
    QString told;
    if (points.size() <= few) {
      for (QPointF const& point : points) told += ' ' + place(point);
      return told;
    }
    QPointF sum;
    for (QPointF const& point : points) sum += point;
    return QString(" %1 points in %2 about %3")
        .arg(points.size())
        .arg(place(points.boundingRect()), place(sum / points.size()));
  }

  static QString pen(QPen const& pen)
  {
    if (pen.style() == Qt::NoPen) return {};
    return QString(" pen %1 %2 %3").arg(color(pen.color()), number(pen.widthF())).arg(int(pen.style()));
  }

  static QString brush(QBrush const& brush)
  {
    QGradient const* gradient = brush.gradient();
    if (!gradient) return " brush " + color(brush.color());
    QString told = " shades";
    for (QGradientStop const& stop : gradient->stops()) told += " ~" + stop.second.name().mid(1);
    return told;
  }

  void addPainting(Painting const& painting, int depth)
  {
    static const char* const names[] = {"text",      "line",    "polyline", "polygon",
                                        "rectangle", "ellipse", "path",     "image"};
    for (Drawn const& each : painting.all) {
      QString line = names[static_cast<int>(each.kind)];
      if (each.kind == Drawn::Kind::Text) {
        line += QString(" %1 %2 %3%4 size %5")
                    .arg(place(each.points.first()), quoted(each.text), color(each.pen.color()),
                         each.font.bold() ? " bold" : "")
                    .arg(number(each.font.pixelSize() > 0 ? each.font.pixelSize() : each.font.pointSizeF()));
      } else if (each.kind == Drawn::Kind::Image) {
        line += ' ' + place(each.box()) + ' ' + pixels(each.image);
      } else {
        line += points(each.points) + pen(each.pen);
        const bool isFilled = each.kind != Drawn::Kind::Line && each.kind != Drawn::Kind::Polyline;
        if (isFilled && each.brush.style() != Qt::NoBrush) line += brush(each.brush);
      }
      if (each.opacity < 1.0) line += " opacity " + QString::number(each.opacity, 'g', 2);
      if (!each.clip.isEmpty()) line += " within " + place(each.clip);
      add(depth, line);
    }
  }

  static bool isOurs(QWidget const& widget)
  {
    const QString name = widget.metaObject()->className();
    return name.startsWith("runsieve::") || name == "QWidget";
  }

  void addPaintingOf(QWidget& widget, int depth)
  {
    auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
    QWidget& painted = area ? *area->viewport() : widget;
    PaintRecorder recorder(painted.size());
    painted.render(&recorder, QPoint(), QRegion(), QWidget::RenderFlags());
    addPainting(recorder.painting(), depth);
  }

  static QString contents(QWidget const& widget)
  {
    QString told;
    if (auto const* label = qobject_cast<QLabel const*>(&widget)) told += quoted(label->text());
    if (auto const* button = qobject_cast<QAbstractButton const*>(&widget))
      told += quoted(button->text()) + (button->isChecked() ? " checked" : "") +
              Snapshot::told("keys", button->shortcut().toString());
    if (auto const* field = qobject_cast<QLineEdit const*>(&widget))
      told += quoted(field->text()) + Snapshot::told("in place", field->placeholderText());
    if (auto const* box = qobject_cast<QComboBox const*>(&widget)) {
      told += quoted(box->currentText());
      const bool isOfTheSystem = qobject_cast<QFontComboBox const*>(box);
      for (int i = 0; i < (isOfTheSystem ? 0 : box->count()); ++i)
        told += (i == 0 ? " of " : " ") + quoted(box->itemText(i));
    }
    if (auto const* text = qobject_cast<QTextEdit const*>(&widget)) told += quoted(text->toPlainText());
    if (auto const* box = qobject_cast<QAbstractSpinBox const*>(&widget)) told += quoted(box->text());
    if (auto const* group = qobject_cast<QGroupBox const*>(&widget)) told += quoted(group->title());
    if (auto const* bar = qobject_cast<QProgressBar const*>(&widget))
      told += QString("%1 of %2").arg(bar->value()).arg(bar->maximum());
    if (auto const* tabs = qobject_cast<QTabBar const*>(&widget))
      for (int i = 0; i < tabs->count(); ++i)
        told += (i == tabs->currentIndex() ? " front " : " ") + quoted(tabs->tabText(i)) +
                Snapshot::told("tip", tabs->tabToolTip(i));
    if (widget.isWindow()) told += Snapshot::told("title", widget.windowTitle());
    return told;
  }

  static QString cell(QModelIndex const& index)
  {
    QString told = quoted(index.data().toString());
    const QVariant check = index.data(Qt::CheckStateRole);
    if (check.isValid()) told += check.toInt() == Qt::Checked ? " [x]" : " [ ]";
    const QVariant ink = index.data(Qt::ForegroundRole);
    if (ink.isValid()) told += " ink " + color(ink.value<QBrush>().color());
    const QVariant ground = index.data(Qt::BackgroundRole);
    if (ground.isValid()) told += " ground " + color(ground.value<QBrush>().color());
    const QVariant font = index.data(Qt::FontRole);
    if (font.isValid())
      told += QString(font.value<QFont>().bold() ? " bold" : "") +
              (font.value<QFont>().strikeOut() ? " struck" : "");
    const QVariant sign = index.data(Qt::DecorationRole);
    if (sign.canConvert<QColor>()) told += " sign " + color(sign.value<QColor>());
    if (sign.canConvert<QPixmap>()) told += " sign " + pixels(sign.value<QPixmap>().toImage());
    const QVariant aligned = index.data(Qt::TextAlignmentRole);
    if (aligned.isValid()) told += QString(" aligned %1").arg(aligned.toInt());
    if (!(index.flags() & Qt::ItemIsEnabled)) told += " off";
    return told + Snapshot::told("tip", index.data(Qt::ToolTipRole).toString()) +
           Snapshot::told("named", index.data(Qt::AccessibleTextRole).toString());
  }

  void addCells(QAbstractItemView const& view, int depth)
  {
    QAbstractItemModel const* model = view.model();
    if (!model) return;
    auto const* table = qobject_cast<QTableView const*>(&view);
    for (int column = 0; table && column < model->columnCount(); ++column)
      if (!table->isColumnHidden(column))
        add(depth,
            QString("column %1%2")
                .arg(quoted(model->headerData(column, Qt::Horizontal).toString()),
                     told("tip", model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString())));
    constexpr int most = 12;
    for (int row = 0; row < std::min(most, model->rowCount()); ++row) {
      QString line = "row";
      for (int column = 0; column < model->columnCount(); ++column)
        if (!table || !table->isColumnHidden(column)) line += ' ' + cell(model->index(row, column));
      add(depth, line);
    }
    add(depth, QString("%1 rows").arg(model->rowCount()));
  }

  void addWidget(QWidget& widget, int depth)
  {
    QString line = widget.metaObject()->className();
    if (!widget.objectName().isEmpty() && !widget.objectName().startsWith("qt_"))
      line += " #" + widget.objectName();
    const QPoint corner = widget.isWindow() ? QPoint() : widget.pos();
    line += ' ' + place(QRectF(corner, QSizeF(widget.size())));
    const QString content = contents(widget);
    if (!content.isEmpty()) line += ' ' + content;
    if (!widget.isEnabled()) line += " off";
    line += manners(widget);
    QString more = told("tip", widget.toolTip()) + told("named", widget.accessibleName()) +
                   told("described", widget.accessibleDescription());
    // Numbers of runs at a point hang on the height of plots.
    if (!paintings) more.replace(QRegularExpression("\\d+"), "#");
    add(depth, line + more);
    if (auto const* view = qobject_cast<QAbstractItemView const*>(&widget)) addCells(*view, depth + 1);
    if (paintings && isOurs(widget)) addPaintingOf(widget, depth + 1);
    const bool isWhole = qobject_cast<QComboBox*>(&widget) || qobject_cast<QAbstractSpinBox*>(&widget) ||
                         qobject_cast<QAbstractItemView*>(&widget) || qobject_cast<QTabBar*>(&widget);
    if (isWhole) return;
    for (QObject* child : widget.children()) {
      auto* part = qobject_cast<QWidget*>(child);
      if (part && !part->isWindow() && part->isVisible() && widget.rect().intersects(part->geometry()))
        addWidget(*part, depth + 1);
    }
  }

  void addActions(QList<QAction*> const& actions, int depth)
  {
    for (QAction const* action : actions) {
      if (action->isSeparator()) {
        add(depth, "----");
        continue;
      }
      QString keys;
      for (QKeySequence const& key : action->shortcuts()) keys += key.toString() + ' ';
      add(depth, QString("%1%2%3%4%5%6%7")
                     .arg(quoted(action->text()), told("keys", keys.trimmed()),
                          action->isEnabled() ? "" : " off", action->isVisible() ? "" : " hidden",
                          action->isChecked()     ? " checked"
                          : action->isCheckable() ? " unchecked"
                                                  : "",
                          action->icon().isNull() ? "" : " icon", told("tip", action->toolTip())));
      if (action->menu()) addActions(action->menu()->actions(), depth + 1);
    }
  }

  QStringList lines;
  bool paintings = true;
};

} // namespace runsieve::test
