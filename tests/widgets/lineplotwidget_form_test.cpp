#include "support/LinePanel.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QSpacerItem>
#include <QSplitter>
#include <QTextDocument>
#include <QTranslator>

namespace runsieve::test {
namespace {

/// The form before the panel has set its state.
struct LinePlotFormTest : testing::Test
{
  QWidget form;
  Ui_LinePlotWidgetClass ui;

  LinePlotFormTest() { ui.setupUi(&form); }

  static void expectCell(QGridLayout* grid, int row, int column, QLayoutItem* item)
  {
    int const index = grid->indexOf(item);
    ASSERT_GE(index, 0);
    int foundRow = -1, foundColumn = -1, rowSpan = -1, columnSpan = -1;
    grid->getItemPosition(index, &foundRow, &foundColumn, &rowSpan, &columnSpan);
    EXPECT_EQ(foundRow, row);
    EXPECT_EQ(foundColumn, column);
    EXPECT_EQ(rowSpan, 1);
    EXPECT_EQ(columnSpan, 1);
  }

  static QLayoutItem* itemOf(QGridLayout* grid, QWidget* widget)
  {
    int const index = grid->indexOf(widget);
    return index < 0 ? nullptr : grid->itemAt(index);
  }

  static std::string visibleText(QLabel* label)
  {
    QTextDocument page;
    page.setHtml(label->text());
    return page.toPlainText().trimmed().toStdString();
  }
};

TEST_F(LinePlotFormTest, ObjectsAreNamedLikeTheMembers)
{
  EXPECT_EQ(ui.gridLayout->objectName(), "gridLayout");
  EXPECT_EQ(ui.splitter->objectName(), "splitter");
  EXPECT_EQ(ui.stackedWidget->objectName(), "stackedWidget");
  EXPECT_EQ(ui.page_no_data->objectName(), "page_no_data");
  EXPECT_EQ(ui.gridLayout_2->objectName(), "gridLayout_2");
  EXPECT_EQ(ui.label->objectName(), "label");
  EXPECT_EQ(ui.plotter->objectName(), "plotter");
  EXPECT_EQ(ui.selector->objectName(), "selector");
  EXPECT_EQ(ui.horizontalLayout->objectName(), "horizontalLayout");
  EXPECT_EQ(ui.exportButton->objectName(), "exportButton");
  EXPECT_EQ(ui.showLegend->objectName(), "showLegend");
  EXPECT_EQ(ui.logSButton->objectName(), "logSButton");
}

TEST_F(LinePlotFormTest, TheFormOwnsAllWidgets)
{
  for (QWidget* widget :
       std::vector<QWidget*>{ui.splitter, ui.stackedWidget, ui.page_no_data, ui.label, ui.plotter,
                             ui.selector, ui.exportButton, ui.showLegend, ui.logSButton})
    EXPECT_TRUE(form.isAncestorOf(widget)) << widget->objectName().toStdString();
}

TEST_F(LinePlotFormTest, TheGridHoldsTheSplitterAboveTheButtons)
{
  EXPECT_EQ(form.layout(), ui.gridLayout);
  expectCell(ui.gridLayout, 0, 0, itemOf(ui.gridLayout, ui.splitter));
  expectCell(ui.gridLayout, 1, 0, ui.horizontalLayout);
}

TEST_F(LinePlotFormTest, TheSplitterHoldsThePagesBesideTheTree)
{
  ASSERT_EQ(ui.splitter->count(), 2);
  EXPECT_EQ(ui.splitter->widget(0), ui.stackedWidget);
  EXPECT_EQ(ui.splitter->widget(1), ui.selector);
  EXPECT_EQ(ui.splitter->orientation(), Qt::Horizontal);
}

TEST_F(LinePlotFormTest, TheNoticeIsThePageBeforeThePlot)
{
  ASSERT_EQ(ui.stackedWidget->count(), 2);
  EXPECT_EQ(ui.stackedWidget->widget(0), ui.page_no_data);
  EXPECT_EQ(ui.stackedWidget->widget(1), ui.plotter);
  EXPECT_EQ(ui.page_no_data->layout(), ui.gridLayout_2);
  expectCell(ui.gridLayout_2, 0, 0, itemOf(ui.gridLayout_2, ui.label));
}

TEST_F(LinePlotFormTest, ASpacerPushesTheButtonsToTheRight)
{
  ASSERT_EQ(ui.horizontalLayout->count(), 4);
  EXPECT_EQ(ui.horizontalLayout->itemAt(0), ui.horizontalSpacer);
  EXPECT_EQ(ui.horizontalLayout->itemAt(1)->widget(), ui.exportButton);
  EXPECT_EQ(ui.horizontalLayout->itemAt(2)->widget(), ui.showLegend);
  EXPECT_EQ(ui.horizontalLayout->itemAt(3)->widget(), ui.logSButton);
  EXPECT_EQ(ui.horizontalSpacer->sizeHint(), QSize(40, 20));
  EXPECT_EQ(ui.horizontalSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
  EXPECT_EQ(ui.horizontalSpacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

TEST_F(LinePlotFormTest, ANamelessFormGetsANameAndANamedOneKeepsIts)
{
  EXPECT_EQ(form.objectName(), "LinePlotWidgetClass");
  QWidget named;
  named.setObjectName("mine");
  Ui_LinePlotWidgetClass other;
  other.setupUi(&named);
  EXPECT_EQ(named.objectName(), "mine");
}

TEST_F(LinePlotFormTest, TheFormHasItsSizeAndTitle)
{
  EXPECT_EQ(form.size(), QSize(1216, 884));
  EXPECT_EQ(form.windowTitle(), "Form");
}

TEST_F(LinePlotFormTest, ThePagesTakeTheSpare)
{
  QSizePolicy const policy = ui.stackedWidget->sizePolicy();
  EXPECT_EQ(policy.horizontalPolicy(), QSizePolicy::Expanding);
  EXPECT_EQ(policy.verticalPolicy(), QSizePolicy::Expanding);
  EXPECT_EQ(policy.horizontalStretch(), 3);
  EXPECT_EQ(policy.verticalStretch(), 0);
  EXPECT_EQ(policy.hasHeightForWidth(), QStackedWidget().sizePolicy().hasHeightForWidth());
  EXPECT_EQ(ui.stackedWidget->sizeIncrement(), QSize(1, 1));
}

TEST_F(LinePlotFormTest, TheNoticeIsRichText)
{
  EXPECT_EQ(ui.label->textFormat(), Qt::RichText);
  EXPECT_TRUE(ui.label->hasScaledContents());
  EXPECT_TRUE(Qt::mightBeRichText(ui.label->text()));
  EXPECT_EQ(visibleText(ui.label), "Simulation data not available");
}

TEST_F(LinePlotFormTest, ButtonsStartWithTheTextsOfTheForm)
{
  EXPECT_EQ(ui.exportButton->text(), "Export Plot");
  EXPECT_EQ(ui.showLegend->text(), "Hide the Legend");
  EXPECT_EQ(ui.logSButton->text(), "Use Linear Scale");
}

TEST_F(LinePlotFormTest, TextsCanBeSetAgain)
{
  for (QPushButton* button : {ui.exportButton, ui.showLegend, ui.logSButton}) button->setText("other");
  ui.label->setText("other");
  form.setWindowTitle("other");
  ui.retranslateUi(&form);
  EXPECT_EQ(form.windowTitle(), "Form");
  EXPECT_EQ(visibleText(ui.label), "Simulation data not available");
  EXPECT_EQ(ui.exportButton->text(), "Export Plot");
  EXPECT_EQ(ui.showLegend->text(), "Hide the Legend");
  EXPECT_EQ(ui.logSButton->text(), "Use Linear Scale");
}

/// Puts its context and the text in brackets.
struct BracketTranslator : QTranslator
{
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(char const* context, char const* text, char const*, int) const override
  {
    return QString(context) == "LinePlotWidgetClass" ? QString("[") + text + "]" : QString();
  }
};

TEST_F(LinePlotFormTest, TextsAreTranslatedInTheContextOfTheForm)
{
  BracketTranslator translator;
  QCoreApplication::installTranslator(&translator);
  ui.retranslateUi(&form);
  QCoreApplication::removeTranslator(&translator);
  EXPECT_EQ(form.windowTitle(), "[Form]");
  EXPECT_EQ(ui.exportButton->text(), "[Export Plot]");
  EXPECT_EQ(ui.showLegend->text(), "[Hide the Legend]");
  EXPECT_EQ(ui.logSButton->text(), "[Use Linear Scale]");
  EXPECT_TRUE(ui.label->text().startsWith('['));
}

} // namespace
} // namespace runsieve::test
