#include <runsieve/widgets/LinePlotWidgetForm.h>

#include <runsieve/widgets/PlotSelector.h>
#include <runsieve/widgets/VtkPlotWidget.h>

#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpacerItem>
#include <QSplitter>
#include <QStackedWidget>

namespace {

template <class Object, class Parent> Object* named(const char* name, Parent* parent)
{
  auto* object = new Object(parent);
  object->setObjectName(QLatin1String(name));
  return object;
}

QString translated(const char* text)
{
  return QCoreApplication::translate("LinePlotWidgetClass", text);
}

} // namespace

void Ui_LinePlotWidgetClass::setupUi(QWidget* form)
{
  if (form->objectName().isEmpty()) form->setObjectName(QStringLiteral("LinePlotWidgetClass"));
  form->resize(1216, 884);
  gridLayout = named<QGridLayout>("gridLayout", form);
  splitter = named<QSplitter>("splitter", form);
  splitter->setOrientation(Qt::Horizontal);

  stackedWidget = named<QStackedWidget>("stackedWidget", splitter);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  policy.setHorizontalStretch(3);
  policy.setVerticalStretch(0);
  policy.setHeightForWidth(stackedWidget->sizePolicy().hasHeightForWidth());
  stackedWidget->setSizePolicy(policy);
  stackedWidget->setSizeIncrement(1, 1);
  page_no_data = named<QWidget>("page_no_data", static_cast<QWidget*>(nullptr));
  gridLayout_2 = named<QGridLayout>("gridLayout_2", page_no_data);
  label = named<QLabel>("label", page_no_data);
  label->setTextFormat(Qt::RichText);
  label->setScaledContents(true);
  gridLayout_2->addWidget(label, 0, 0, 1, 1);
  stackedWidget->addWidget(page_no_data);
  plotter = named<VtkPlotWidget>("plotter", static_cast<QWidget*>(nullptr));
  stackedWidget->addWidget(plotter);
  splitter->addWidget(stackedWidget);
  selector = named<PlotSelector>("selector", splitter);
  splitter->addWidget(selector);
  gridLayout->addWidget(splitter, 0, 0, 1, 1);

  horizontalLayout = new QHBoxLayout();
  horizontalLayout->setObjectName(QStringLiteral("horizontalLayout"));
  horizontalSpacer = new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
  horizontalLayout->addItem(horizontalSpacer);
  exportButton = named<QPushButton>("exportButton", form);
  showLegend = named<QPushButton>("showLegend", form);
  logSButton = named<QPushButton>("logSButton", form);
  for (QPushButton* button : {exportButton, showLegend, logSButton}) horizontalLayout->addWidget(button);
  gridLayout->addLayout(horizontalLayout, 1, 0, 1, 1);

  retranslateUi(form);
  QMetaObject::connectSlotsByName(form);
}

void Ui_LinePlotWidgetClass::retranslateUi(QWidget* form)
{
  form->setWindowTitle(translated("Form"));
  label->setText(translated("<html><body><p align=\"center\"><span style=\"font-size:18pt\">"
                            "Simulation data not available</span></p></body></html>"));
  exportButton->setText(translated("Export Plot"));
  showLegend->setText(translated("Hide the Legend"));
  logSButton->setText(translated("Use Linear Scale"));
}
