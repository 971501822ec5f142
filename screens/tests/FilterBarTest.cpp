#include "ListWindow.h"
#include "screens/RVFilterBarController.h"

namespace seedmote {
namespace {

class FilterBarTest : public ListWindow, public testing::WithParamInterface<platform::Idiom> {
 protected:
  FilterBarTest() : ListWindow(GetParam()) {
    bar.setTorrentListController(controller.get());
    bar.viewDidLoad();
    bar.view()->setFrame({0, 0, 200, 355});
    loader.load(platform::LayoutLoader::layoutName("RVFilterBarController", GetParam()), bar,
                window.contentItem());
    showAll();
    controller->view()->setTranslation({200, 0});
    window.resize(860, 600);
  }

  RVFilterBarController bar;
};

INSTANTIATE_TEST_SUITE_P(OnBothIdioms, FilterBarTest,
                         testing::Values(platform::Idiom::phone, platform::Idiom::tablet));

TEST_P(FilterBarTest, HighlightAndFilterFollowTheTaps) {
  struct Case {
    int row;
    int highlighted;
    int filter;
  };
  for (const Case& wanted : {Case{0, 1, 1}, Case{2, 5, 5}, Case{2, 1, 5}, Case{4, 2, 2}, Case{6, 7, 7},
                             Case{0, 1, 1}, Case{1, 3, 3}}) {
    QTest::mouseClick(&window, Qt::LeftButton, {}, {25, wanted.row * 50 + 25});
    settle();
    settle();
    EXPECT_EQ(bar.selectedid(), wanted.highlighted) << wanted.row;
    EXPECT_EQ(controller->filterID(), wanted.filter) << wanted.row;
    for (const platform::TableView::LiveRow& live : bar.table()->liveRows()) {
      const auto* row = static_cast<RVFilterBarCell*>(live.cell);
      EXPECT_EQ(row->isSelected(), row->filterBarID == wanted.highlighted) << row->text.toStdString();
      EXPECT_EQ(row->textColor == QColor(0, 0, 255), row->isSelected());
      EXPECT_EQ(row->image.toString().endsWith(QLatin1String("_selected.png")), row->isSelected());
    }
  }
  EXPECT_EQ(lines.count("RVFilterBarController didSelectRowAtIndexPath = 5"), 2);
}

TEST_P(FilterBarTest, KeysChooseARowAndNothingScrolls) {
  bar.view()->setFrame({0, 0, 200, 100});
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_End, Qt::Key_Tab, Qt::Key_Space}) {
    QTest::keyClick(&window, key);
  }
  bar.table()->scrollToEnd(true);
  settle();
  EXPECT_EQ(bar.selectedid(), 3) << "the second row";
  EXPECT_EQ(bar.table()->contentOffset(), 0);
}

}  // namespace
}  // namespace seedmote
