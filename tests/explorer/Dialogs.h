#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <utility>

namespace runsieve::test {

/// Waits for the next dialog of a class, and answers it: dialogs hold up whoever opens them.
template <class Dialog> class NextDialogOf
{
public:
  /// \param answer must end the dialog
  explicit NextDialogOf(std::function<void(Dialog&)> answer)
  {
    QObject::connect(&timer, &QTimer::timeout, [this, answer = std::move(answer)] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      timer.stop();
      wasSeen = true;
      answer(*dialog);
    });
    timer.start(5);
  }

  [[nodiscard]] bool seen() const { return wasSeen; }

private:
  QTimer timer;
  bool wasSeen = false;
};

/// Answers the next message with a button, and keeps what it says.
class NextMessage
{
public:
  explicit NextMessage(QMessageBox::StandardButton button)
      : next([this, button](QMessageBox& box) {
          text = box.text();
          more = box.informativeText();
          if (QPushButton const* first = box.defaultButton()) usual = first->text();
          const bool isOfFiles = !qobject_cast<QFileDialog*>(box.parentWidget()) && !text.startsWith('<');
          EXPECT_TRUE(!isOfFiles || box.textFormat() == Qt::PlainText) << "names are no markup";
          chosen = box.button(button)->text();
          tip = box.button(button)->toolTip();
          box.button(button)->click();
        })
  {}

  [[nodiscard]] bool seen() const { return next.seen(); }

  QString text;
  QString more;
  QString usual;  ///< on the button that Return presses
  QString chosen; ///< on the one that answers
  QString tip;    ///< of that one

private:
  NextDialogOf<QMessageBox> next;
};

/// Answers the next dialog that asks for a file, or gives it up.
class NextFile
{
public:
  /// \param path empty: none
  explicit NextFile(QString const& path)
      : next([this, path](QFileDialog& dialog) {
          proposed = dialog.selectedFiles().value(0);
          if (path.isEmpty()) {
            dialog.reject();
            return;
          }
          dialog.selectFile(path);
          QMetaObject::invokeMethod(&dialog, "accept");
        })
  {}

  [[nodiscard]] bool seen() const { return next.seen(); }

  QString proposed; ///< what the dialog offered

private:
  NextDialogOf<QFileDialog> next;
};

/// Looks at the menu that a function opens, and closes it.
template <class Open> void withMenu(Open const& open, std::function<void(QMenu&)> const& look)
{
  bool seen = false;
  QTimer::singleShot(0, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    seen = true;
    look(*menu);
    menu->close();
  });
  open();
  EXPECT_TRUE(seen);
}

} // namespace runsieve::test
