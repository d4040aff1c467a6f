// The help window: finds its file, says when it cannot, and shows what is asked for.
#include "app/help_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>
#include <QToolBar>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>

#include "app/help_page.h"
#include "tests/support/recording_message_door.h"
#include "tests/support/row_name.h"

namespace {

const QString kGoodFile = QStringLiteral(TELMARION_HELP_DIR "/Telmarion.hlp");

std::unique_ptr<HelpWindow> OpenGood() {
  RecordingMessageDoor door;
  return HelpWindow::Open({TELMARION_HELP_DIR}, door, nullptr);
}

template <class Widget>
Widget& Part(const HelpWindow& window, const char* name) {
  auto* part = window.findChild<Widget*>(name);
  if (!part) throw std::runtime_error(name);
  return *part;
}

HelpPage& Page(const HelpWindow& window) {
  return Part<HelpPage>(window, "helpPage");
}

QString Shown(const HelpWindow& window) {
  return Page(window).source().fileName() + (Page(window).source().hasFragment() ? "#" : "") +
         Page(window).source().fragment();
}

void Press(const HelpWindow& window, const char* action) {
  Part<QAction>(window, action).trigger();
}

TEST(HelpFolders, AreBesideTheProgramInstalledAndInTheBuildTree) {
  EXPECT_EQ(HelpFolders("/opt/t/bin"),
            QStringList({"/opt/t/bin", "/opt/t/share/telmarion", "/opt/t/help"}));
}

TEST(FindHelpFile, TakesTheFirstFolderThatHasIt) {
  const QTemporaryDir top;
  for (const char* name : {"a", "b", "c"}) QDir(top.path()).mkdir(name);
  QDir(top.filePath("a")).mkdir("Telmarion.hlp");  // a folder of that name is not it
  for (const char* name : {"b", "c"}) {
    ASSERT_TRUE(QFile::copy(kGoodFile, top.filePath(name) + QStringLiteral("/Telmarion.hlp")));
  }
  EXPECT_EQ(
      FindHelpFile({top.filePath("none"), top.filePath("a"), top.filePath("b"), top.filePath("c")}),
      top.filePath("b/Telmarion.hlp"));
  EXPECT_EQ(FindHelpFile({top.filePath("a")}), QString());
}

TEST(HelpWindow, MissingFileIsOneMessage) {
  RecordingMessageDoor door;
  EXPECT_EQ(HelpWindow::Open({"/no/such/place", "/nor/this"}, door, nullptr), nullptr);
  const QList<Message> said = door.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].kind, "error");
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.contains("\"Telmarion.hlp\" was not found"));
  EXPECT_TRUE(said[0].text.contains("/no/such/place"));
  EXPECT_TRUE(said[0].text.contains("/nor/this"));
}

struct Damage {
  const char* name;
  std::function<QByteArray(const QByteArray&)> of;
};

void PrintTo(const Damage& damage, std::ostream* out) {
  *out << damage.name;
}

class DamagedHelp : public testing::TestWithParam<Damage> {};

TEST_P(DamagedHelp, IsOneMessageThatNamesTheFile) {
  QFile good(kGoodFile);
  ASSERT_TRUE(good.open(QIODevice::ReadOnly));
  const QTemporaryDir folder;
  QFile bad(folder.filePath("Telmarion.hlp"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write(GetParam().of(good.readAll()));
  bad.close();

  RecordingMessageDoor door;
  EXPECT_EQ(HelpWindow::Open({folder.path()}, door, nullptr), nullptr);
  const QList<Message> said = door.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.contains(bad.fileName())) << said[0].text.toStdString();
  EXPECT_TRUE(said[0].text.contains("damaged")) << said[0].text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Ways, DamagedHelp,
    testing::Values(
        Damage{"empty", [](const QByteArray&) { return QByteArray(); }},
        Damage{"text", [](const QByteArray&) { return QByteArray("not a help file"); }},
        Damage{"cut_in_half", [](const QByteArray& good) { return good.left(good.size() / 2); }},
        Damage{"last_page_lost", [](const QByteArray& good) { return good.chopped(4096); }},
        Damage{"head_alone", [](const QByteArray& good) { return good.left(4096); }},
        Damage{"zeros_inside",
               [](const QByteArray& good) {
                 QByteArray bad = good;
                 bad.replace(8192, bad.size() - 16384, QByteArray(bad.size() - 16384, '\0'));
                 return bad;
               }}),
    RowName());

TEST(HelpWindow, OpensAtTheFirstPageAndIsNotModal) {
  const auto window = OpenGood();
  ASSERT_TRUE(window);
  EXPECT_EQ(window->objectName(), "HelpWindow");
  EXPECT_FALSE(window->isModal());
  EXPECT_FALSE(window->testAttribute(Qt::WA_QuitOnClose));
  EXPECT_EQ(Shown(*window), "index.html");
  EXPECT_EQ(Page(*window).documentTitle(), "What TELMARION does");
}

TEST(HelpWindow, ShowTopicOpensIt) {
  const auto window = OpenGood();
  window->ShowTopic("results");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Shown(*window), "results.html");
  window->ShowTopic("ce");
  EXPECT_EQ(Shown(*window), "measurements.html#ce");
  EXPECT_GT(Page(*window).verticalScrollBar()->value(), 0);
  window->ShowTopic("no such topic");
  EXPECT_EQ(Shown(*window), "index.html");
}

TEST(HelpWindow, ComesBackAfterClosing) {
  const auto window = OpenGood();
  window->ShowTopic("results");
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  window->ShowTopic("files");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Shown(*window), "files.html");
}

TEST(HelpWindow, GoesBackForwardAndHome) {
  const auto window = OpenGood();
  EXPECT_FALSE(Part<QAction>(*window, "helpBack").isEnabled());
  window->ShowTopic("results");
  window->ShowTopic("files");
  Press(*window, "helpBack");
  EXPECT_EQ(Shown(*window), "results.html");
  Press(*window, "helpForward");
  EXPECT_EQ(Shown(*window), "files.html");
  EXPECT_FALSE(Part<QAction>(*window, "helpForward").isEnabled());
  Press(*window, "helpHome");
  EXPECT_EQ(Shown(*window), "index.html");
}

TEST(HelpWindow, ContentsOpenAndFollow) {
  const auto window = OpenGood();
  window->ShowTopic("index");
  auto& list = Part<QHelpContentWidget>(*window, "helpContents");
  ASSERT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() > 0; }));
  ASSERT_TRUE(QTest::qWaitFor([&] { return list.currentIndex().isValid(); }));
  EXPECT_EQ(list.currentIndex().data().toString(), "What TELMARION does");

  const QModelIndex second = list.model()->index(1, 0);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(second).center());
  EXPECT_EQ(Shown(*window), "first-case.html");

  window->ShowTopic("ce");
  EXPECT_EQ(list.currentIndex().data().toString(), "CE: centre-edge angle");
  list.setCurrentIndex(list.model()->index(0, 0));
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(Shown(*window), "index.html");
}

TEST(HelpWindow, IndexNarrowsAndOpens) {
  const auto window = OpenGood();
  window->ShowTopic("index");
  Part<QTabWidget>(*window, "helpPanes").setCurrentIndex(1);
  auto& list = Part<QHelpIndexWidget>(*window, "helpIndex");
  ASSERT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() > 0; }));
  const int all = list.model()->rowCount();
  auto& filter = Part<QLineEdit>(*window, "helpIndexFilter");
  QTest::keyClicks(&filter, "magn");
  EXPECT_LT(list.model()->rowCount(), all);
  QTest::keyClick(&filter, Qt::Key_Return);
  EXPECT_EQ(Shown(*window), "measurements.html#magnification");

  filter.clear();
  EXPECT_EQ(list.model()->rowCount(), all);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                    list.visualRect(list.model()->index(0, 0)).center());
  EXPECT_EQ(Shown(*window), "view3d.html");
}

struct Wanted {
  const char* name;
  const char* words;
  const char* page;  // one of the pages found; empty: nothing is found
};

void PrintTo(const Wanted& wanted, std::ostream* out) {
  *out << wanted.words;
}

class HelpSearchFor : public testing::TestWithParam<Wanted> {};

TEST_P(HelpSearchFor, FindsThePage) {
  const auto window = OpenGood();
  window->ShowTopic("keyboard");
  auto& box = Part<QLineEdit>(*window, "helpSearchText");
  auto& results = Part<QListWidget>(*window, "helpSearchResults");
  auto& status = Part<QLabel>(*window, "helpSearchStatus");
  Part<QTabWidget>(*window, "helpPanes").setCurrentIndex(2);
  box.setText(GetParam().words);  // at once: the index is not made yet
  QTest::keyClick(&box, Qt::Key_Return);
  ASSERT_TRUE(QTest::qWaitFor([&] { return status.text() != "Searching …"; }));
  if (!*GetParam().page) {
    EXPECT_EQ(results.count(), 0);
    EXPECT_EQ(status.text(), "Nothing found.");
    return;
  }
  QStringList pages;
  for (int row = 0; row < results.count(); ++row) {
    pages.append(results.item(row)->data(Qt::UserRole).toUrl().fileName());
    EXPECT_FALSE(results.item(row)->text().isEmpty());
  }
  ASSERT_TRUE(pages.contains(GetParam().page)) << pages.join(' ').toStdString();

  results.setCurrentRow(static_cast<int>(pages.indexOf(GetParam().page)));
  QTest::keyClick(&results, Qt::Key_Return);
  EXPECT_EQ(Shown(*window), GetParam().page);
  EXPECT_TRUE(Page(*window).textCursor().hasSelection());
}

INSTANTIATE_TEST_SUITE_P(
    Words, HelpSearchFor,
    testing::Values(Wanted{"word", "dysplastic", "measurements.html"},
                    Wanted{"capitals", "DYSPLASTIC", "measurements.html"},
                    Wanted{"slash", "R/Wb", "results.html"},
                    Wanted{"hyphen", "Theta-R", "results.html"},
                    Wanted{"two_words", "calibration object", "measurements.html"},
                    Wanted{"lone_quotation_mark", "\"calibration", "measurements.html"},
                    Wanted{"nothing", "zzyzx", ""}, Wanted{"one_of_two", "dysplastic zzyzx", ""}),
    RowName());

TEST(HelpWindow, EmptySearchSaysNothing) {
  const auto window = OpenGood();
  auto& box = Part<QLineEdit>(*window, "helpSearchText");
  box.setText("  \" ");
  Part<QPushButton>(*window, "helpSearchButton").click();
  EXPECT_EQ(Part<QLabel>(*window, "helpSearchStatus").text(), "");
}

TEST(HelpWindow, TextGrowsShrinksAndComesBack) {
  const auto window = OpenGood();
  window->ShowTopic("measurements");
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  const double usual = Page(*window).font().pointSizeF();
  const double height = Page(*window).document()->size().height();
  Press(*window, "helpLarger");
  EXPECT_NEAR(Page(*window).font().pointSizeF(), usual * 1.2, 0.01);
  EXPECT_GT(Page(*window).document()->size().height(), height);
  EXPECT_EQ(Shown(*window), "measurements.html");
  for (int i = 0; i < 30; ++i) Press(*window, "helpLarger");
  EXPECT_NEAR(Page(*window).font().pointSizeF(), usual * 3.0, 0.01);
  EXPECT_FALSE(Part<QAction>(*window, "helpLarger").isEnabled());
  for (int i = 0; i < 30; ++i) Press(*window, "helpSmaller");
  EXPECT_NEAR(Page(*window).font().pointSizeF(), usual * 0.6, 0.01);
  EXPECT_FALSE(Part<QAction>(*window, "helpSmaller").isEnabled());
  QTest::keyClick(window.get(), Qt::Key_0, Qt::ControlModifier);
  EXPECT_NEAR(Page(*window).font().pointSizeF(), usual, 0.01);
}

TEST(HelpWindow, ZoomKeepsHistory) {
  const auto window = OpenGood();
  window->ShowTopic("results");
  window->ShowTopic("files");
  Press(*window, "helpLarger");
  Press(*window, "helpBack");
  EXPECT_EQ(Shown(*window), "results.html");
  Press(*window, "helpBack");
  EXPECT_EQ(Shown(*window), "index.html");
}

TEST(HelpWindow, DrawingsAndTextFollowTheTheme) {
  const auto window = OpenGood();
  window->resize(700, 800);
  window->ShowTopic("diagram");
  const QPalette before = QApplication::palette();
  QPalette dark(QColor(40, 40, 40), QColor(40, 40, 40));
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  dark.setColor(QPalette::Text, QColor(240, 240, 240));
  QApplication::setPalette(dark);
  QCoreApplication::processEvents();
  const QImage picture =
      Page(*window).loadResource(QTextDocument::ImageResource, QUrl("diagram.svg")).value<QImage>();
  const QImage page = Page(*window).viewport()->grab().toImage();
  QApplication::setPalette(before);
  QCoreApplication::processEvents();

  int light = 0;
  int black = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      if (pixel.alpha() > 200 && pixel.lightness() > 200) ++light;
      if (pixel.alpha() > 200 && pixel.lightness() < 40) ++black;
    }
  }
  EXPECT_GT(light, 100);
  EXPECT_EQ(black, 0);
  EXPECT_LT(page.pixelColor(2, 2).lightness(), 60);
}

QSize SizeOfPicture(HelpWindow& window, const char* name) {
  const QUrl url(name);
  return Page(window).loadResource(QTextDocument::ImageResource, url).value<QImage>().size();
}

// It is stored with twice the pixels, for fine displays.
TEST(HelpWindow, APictureOfTheProgramHasItsOwnSizeWhereThereIsRoom) {
  const auto window = OpenGood();
  window->ShowTopic("measuring");
  const QImage stored(TELMARION_SOURCE_DIR "/help/measuring-results.png");
  ASSERT_FALSE(stored.isNull());
  window->resize(1400, 800);
  EXPECT_EQ(SizeOfPicture(*window, "measuring-results.png"), stored.size() / 2);
  window->resize(500, 800);
  const QSize narrow = SizeOfPicture(*window, "measuring-results.png");
  EXPECT_LT(narrow.width(), stored.width() / 2);
  EXPECT_NEAR(double(narrow.width()) / narrow.height(), double(stored.width()) / stored.height(),
              0.01);
}

TEST(HelpWindow, NoPageIsWiderThanTheWindow) {
  const auto window = OpenGood();
  for (const QSize size : {QSize(700, 600), QSize(1000, 700), QSize(2000, 900), QSize(800, 600)}) {
    window->resize(size);
    for (const QUrl& url : HelpFile::Open(kGoodFile).file->Pages()) {
      window->ShowTopic(url.fileName().chopped(5));
      EXPECT_EQ(Page(*window).source().fileName(), url.fileName());
      EXPECT_EQ(Page(*window).horizontalScrollBar()->maximum(), 0)
          << url.fileName().toStdString() << " at " << size.width();
    }
  }
}

TEST(HelpWindow, KeysReachEveryPart) {
  const auto window = OpenGood();
  window->ShowTopic("index");
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(Part<QLineEdit>(*window, "helpSearchText").hasFocus());
  QTest::keyClick(window.get(), Qt::Key_F6);
  EXPECT_TRUE(Page(*window).hasFocus());
  QTest::keyClick(window.get(), Qt::Key_F6);
  EXPECT_TRUE(Part<QLineEdit>(*window, "helpSearchText").hasFocus());
  window->ShowTopic("files");
  QTest::keyClick(window.get(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Shown(*window), "index.html");
}

}  // namespace
