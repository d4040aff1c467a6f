// The help text itself: every page is reachable, every link and keyword leads somewhere, and the
// figures that it may quote are the only ones.
#include <gtest/gtest.h>

#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpIndexModel>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTextDocumentFragment>
#include <memory>

#include "app/help_file.h"

namespace {

class HelpText : public testing::Test {
 protected:
  void SetUp() override {
    HelpFile::Opened opened = HelpFile::Open(FindHelpFile({TELMARION_HELP_DIR}));
    ASSERT_TRUE(opened.file) << opened.trouble.toStdString();
    file_ = std::move(opened.file);
  }

  QString Source(const QUrl& page) const {
    return QString::fromUtf8(file_->engine().fileData(page.adjusted(QUrl::RemoveFragment)));
  }

  // Whether the page is there, and the place on it.
  bool Leads(const QUrl& url) const {
    const QString source = Source(url);
    return !source.isEmpty() &&
           (!url.hasFragment() || source.contains("<a name=\"" + url.fragment() + "\">"));
  }

  QString WholeText() const {
    QString text;
    for (const QUrl& page : file_->Pages()) {
      text += QTextDocumentFragment::fromHtml(Source(page)).toPlainText() + '\n';
    }
    return text;
  }

  std::unique_ptr<HelpFile> file_;
};

void CollectContents(const QHelpContentItem& item, QList<QUrl>& urls) {
  if (item.parent()) urls.append(item.url());
  for (int i = 0; i < item.childCount(); ++i) CollectContents(*item.child(i), urls);
}

QList<QUrl> Contents(QHelpContentModel& model) {
  EXPECT_TRUE(QTest::qWaitFor([&] { return !model.isCreatingContents() && model.rowCount() > 0; }));
  QList<QUrl> urls;
  for (int row = 0; row < model.rowCount(); ++row) {
    CollectContents(*model.contentItemAt(model.index(row, 0)), urls);
  }
  return urls;
}

TEST_F(HelpText, EveryPageIsInTheContents) {
  const std::unique_ptr<QHelpContentWidget> list(file_->engine().contentWidget());
  auto* model = qobject_cast<QHelpContentModel*>(list->model());
  QSet<QUrl> listed;
  for (const QUrl& url : Contents(*model)) {
    EXPECT_TRUE(Leads(url)) << url.toString().toStdString();
    listed.insert(url.adjusted(QUrl::RemoveFragment));
  }
  ASSERT_GE(file_->Pages().size(), 12);
  for (const QUrl& page : file_->Pages()) {
    EXPECT_TRUE(listed.contains(page)) << page.toString().toStdString();
  }
}

TEST_F(HelpText, EveryHeadingWithAPlaceIsInTheContents) {
  const std::unique_ptr<QHelpContentWidget> list(file_->engine().contentWidget());
  const QList<QUrl> listed = Contents(*qobject_cast<QHelpContentModel*>(list->model()));
  const QRegularExpression place("<a name=\"([^\"]+)\">");
  for (const QUrl& page : file_->Pages()) {
    for (const auto& match : place.globalMatch(Source(page))) {
      QUrl url = page;
      url.setFragment(match.captured(1));
      EXPECT_TRUE(listed.contains(url)) << url.toString().toStdString();
    }
  }
}

TEST_F(HelpText, EveryLinkLeadsSomewhere) {
  const QRegularExpression link("(?:href|src)=\"([^\"]+)\"");
  int links = 0;
  for (const QUrl& page : file_->Pages()) {
    for (const auto& match : link.globalMatch(Source(page))) {
      ++links;
      EXPECT_TRUE(Leads(page.resolved(QUrl(match.captured(1)))))
          << match.captured(1).toStdString() << " on " << page.toString().toStdString();
    }
  }
  EXPECT_GT(links, 40);
}

TEST_F(HelpText, EveryKeywordLeadsToOnePlace) {
  const std::unique_ptr<QHelpIndexWidget> list(file_->engine().indexWidget());
  auto* model = qobject_cast<QHelpIndexModel*>(list->model());
  ASSERT_TRUE(QTest::qWaitFor([&] { return !model->isCreatingIndex() && model->rowCount() > 0; }));
  EXPECT_GT(model->rowCount(), 60);
  for (const QString& keyword : model->stringList()) {
    const QList<QHelpLink> links = file_->engine().documentsForKeyword(keyword);
    ASSERT_EQ(links.size(), 1) << keyword.toStdString();
    EXPECT_TRUE(Leads(links.first().url)) << keyword.toStdString();
  }
}

TEST_F(HelpText, TopicsOfTheProgramAreThere) {
  for (const char* topic : {"index",    "first-case", "measurements", "entering", "results",
                            "diagram",  "view3d",     "printing",     "files",    "model",
                            "messages", "keyboard",   "l2",           "c",        "h",
                            "x",        "z",          "rotation",     "ce",       "radius",
                            "rwb",      "thetar",     "thetapol",     "pmaxwb",   "pmax",
                            "weight",   "refused",    "uncertainty",  "measuring"}) {
    EXPECT_EQ(file_->engine().documentsForIdentifier(topic).size(), 1) << topic;
    EXPECT_TRUE(Leads(file_->Topic(topic))) << topic;
  }
  EXPECT_EQ(file_->Topic("no such topic"), file_->Home());
}

TEST_F(HelpText, EveryPictureIsDescribed) {
  const QRegularExpression picture("<img [^>]*>");
  for (const QUrl& page : file_->Pages()) {
    for (const auto& match : picture.globalMatch(Source(page))) {
      EXPECT_TRUE(match.captured().contains("alt=\"")) << match.captured().toStdString();
    }
  }
}

TEST_F(HelpText, EveryPictureIsThereAndSmall) {
  const QRegularExpression picture("<img src=\"([^\"]*)\"");
  int found = 0;
  for (const QUrl& page : file_->Pages()) {
    for (const auto& match : picture.globalMatch(Source(page))) {
      const QUrl url = page.resolved(QUrl(match.captured(1)));
      const QByteArray bytes = file_->engine().fileData(file_->engine().findFile(url));
      EXPECT_GT(bytes.size(), 0) << url.toString().toStdString();
      EXPECT_LE(bytes.size(), 150 * 1024) << url.toString().toStdString();
      ++found;
    }
  }
  EXPECT_GE(found, 8);
}

TEST_F(HelpText, SaysThatItIsNoMedicalDevice) {
  for (const char* topic : {"index", "limits"}) {
    const QString text =
        QTextDocumentFragment::fromHtml(Source(file_->Topic(topic))).toPlainText().simplified();
    EXPECT_TRUE(text.contains("for research and teaching", Qt::CaseInsensitive)) << topic;
    EXPECT_TRUE(text.contains("not a certified medical device")) << topic;
  }
}

TEST_F(HelpText, QuotesTheFiguresOfMedicine) {
  const QString text = WholeText().simplified();
  for (const char* figure : {"20°[^.]*dysplastic", "20° to 25°[^.]*borderline", "25°[^.]*normal",
                             "two to three times the body weight"}) {
    EXPECT_TRUE(text.contains(QRegularExpression(figure))) << figure;
  }
}

TEST_F(HelpText, HasTheMessagesWordForWord) {
  const QString text = WholeText().simplified();
  for (const char* message :
       {"numeric value expected",
        "wrong date",
        "wrong angle",
        "Not correct file",
        "In this range of input data you could not use this model",
        "Division by zero",
        "Do you want to save data ?",
        "Print results?",
        "TELMARION New",
        "TELMARION End",
        "TELMARION print",
        "TELMARION Start",
        "A case was not saved when TELMARION ended. It was kept.",
        "No results for this case: in this range of input data you could not use this model",
        "The stresses are those of the case before. Go on all the same?",
        "There are no stresses for this case. Go on all the same?",
        "Unsaved changes",
        "This weight counts as not known because OK was pressed without one. "
        "New or Change starts over.",
        "Unsaved work cannot be kept for the next start.",
        "These entries cannot be kept for the next start: ",
        "Marks on a radiograph were not used when TELMARION ended. They were kept.",
        "The marks on this radiograph have not been used. Discard them and open another?",
        "Open a new case with these measurements?",
        ": The file has changed since it was marked. Its marks are kept.",
        "Click three or more points on the edge instead."}) {
    EXPECT_TRUE(text.contains(message)) << message;
  }
}

}  // namespace
