#include "app/explorer/session/ErrorDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

#include <utility>

namespace runsieve::app {

namespace {

QLabel* plainLabel(QString const& text)
{
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText); // names in a file are no markup, whatever they look like
  label->setText(text);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  return label;
}

} // namespace

QString adviceOn(QString const& message, FileUse use)
{
  static constexpr char gone[] = "No such file";
  if (use == FileUse::Writing && message.contains(gone, Qt::CaseInsensitive))
    return "The folder is not there. Choose another place, or make the folder.";
  static const std::pair<char const*, char const*> known[] = {
      {gone, "Was the file moved or renamed? Open it from where it is now."},
      {"Permission denied", "You may not read or write there. Choose another place, or ask for access."},
      {"No space left", "The disk is full. Make room, or choose another place."},
      {"not enough memory", "Close other programs, or open a part of the scan."},
      {"sieve of version", "Install the newer version of Runsieve that wrote the file."},
      {"no JSON",
       "The session is damaged: its file was cut off or edited. Use a copy, or save the session again."}};
  for (auto const& [part, advice] : known)
    if (message.contains(part, Qt::CaseInsensitive)) return advice;
  return {};
}

ErrorDialog::ErrorDialog(ErrorText const& text, QWidget* parent) : QDialog(parent)
{
  constexpr int iconSize = 32;
  constexpr int width = 460;
  setWindowTitle("Runsieve");
  copied =
      QStringList{
          text.summary, text.message, text.advice,
          QString("runsieve %1, Qt %2, %3").arg(RUNSIEVE_VERSION, qVersion(), QSysInfo::prettyProductName())}
          .join('\n');
  auto* icon = new QLabel;
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize, iconSize));
  auto* summary = plainLabel(text.summary);
  QFont bold = summary->font();
  bold.setBold(true);
  summary->setFont(bold);
  auto* message = plainLabel(text.message);
  message->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  auto* scroll = new QScrollArea; // messages quote names, which can be long
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidget(message);
  auto* column = new QVBoxLayout;
  column->addWidget(summary);
  column->addWidget(scroll);
  if (!text.advice.isEmpty()) column->addWidget(plainLabel(text.advice));
  column->addStretch(1);
  auto* row = new QHBoxLayout;
  row->addWidget(icon, 0, Qt::AlignTop);
  row->addSpacing(8);
  row->addLayout(column, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  auto* copy = buttons->addButton("Copy details", QDialogButtonBox::ActionRole);
  copy->setToolTip("Copy the message, for a mail or a report");
  connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(copied); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(row, 1);
  layout->addWidget(buttons);
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  buttons->button(QDialogButtonBox::Ok)->setFocus();
  const int lines =
      QFontMetrics(font()).boundingRect(0, 0, width, 10000, Qt::TextWordWrap, text.message).height();
  scroll->setFixedHeight(std::clamp(lines + 12, 24, 260));
  resize(width + 90, sizeHint().height());
}

void ErrorDialog::tell(QWidget* parent, QString const& summary, QString const& message, FileUse use)
{
  ErrorDialog({summary, message, adviceOn(message, use)}, parent).exec();
}

} // namespace runsieve::app
