// Reads a PDF back: its words with places, fonts and sizes, its properties, and its pages as
// pictures. Places are twips from the top left corner of the paper.
#pragma once

#include <gtest/gtest.h>
#include <poppler-document.h>
#include <poppler-font.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <QImage>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

struct PdfWord {
  QString text;
  QRectF box;
  QString font;
  double size = 0.0;  // points
};

// Words on one line, in their order.
struct PdfLine {
  QString text;  // blanks between the words
  double x = 0.0;
  double y = 0.0;
  double right = 0.0;
  double size = 0.0;
};

class PdfPages {
 public:
  explicit PdfPages(const QString& path)
      : document_(poppler::document::load_from_file(path.toStdString())) {
    if (document_ == nullptr) ADD_FAILURE() << "no PDF: " << path.toStdString();
  }

  int Count() const { return document_ == nullptr ? 0 : document_->pages(); }

  // Pages count from 1.
  QSizeF PaperOf(int page) const {
    const poppler::rectf paper = Page(page)->page_rect();
    return QSizeF(paper.width(), paper.height()) * 20.0;
  }

  std::vector<PdfWord> WordsOf(int page) const {
    std::vector<PdfWord> words;
    const auto from = Page(page);
    for (const auto& word : from->text_list(poppler::page::text_list_include_font)) {
      const poppler::rectf box = word.bbox();
      words.push_back(
          {Text(word.text()),
           QRectF(box.x() * 20.0, box.y() * 20.0, box.width() * 20.0, box.height() * 20.0),
           QString::fromStdString(word.get_font_name()), word.get_font_size()});
    }
    return words;
  }

  // From top to bottom; words of a line that are more than `gap` apart are lines of their own.
  std::vector<PdfLine> LinesOf(int page, double gap = 300.0) const {
    std::vector<PdfWord> words = WordsOf(page);
    std::stable_sort(words.begin(), words.end(), [](const PdfWord& a, const PdfWord& b) {
      if (std::abs(a.box.bottom() - b.box.bottom()) > 20.0) return a.box.bottom() < b.box.bottom();
      return a.box.left() < b.box.left();
    });
    std::vector<PdfLine> lines;
    double bottom = -1.0;
    for (const PdfWord& word : words) {
      const QRectF& box = word.box;
      const bool goesOn = !lines.empty() && std::abs(box.bottom() - bottom) < 20.0 &&
                          box.left() - lines.back().right < gap;
      if (goesOn) {
        lines.back().text += u' ' + word.text;
        lines.back().right = box.right();
      } else {
        lines.push_back({word.text, box.left(), box.top(), box.right(), word.size});
      }
      bottom = box.bottom();
    }
    return lines;
  }

  QStringList TextsOf(int page) const {
    QStringList texts;
    for (const PdfLine& line : LinesOf(page)) texts += line.text;
    return texts;
  }

  // The line with this text; fails the test when there is none.
  PdfLine Line(int page, const QString& text) const {
    for (const PdfLine& line : LinesOf(page)) {
      if (line.text == text) return line;
    }
    ADD_FAILURE() << "page " << page << " has no \"" << text.toStdString() << "\", but\n"
                  << TextsOf(page).join(u'\n').toStdString();
    return {};
  }

  QString Title() const { return Text(document_->get_title()); }
  // All that the document says of itself but for its date, "key=value".
  QStringList Properties() const {
    QStringList properties;
    for (const std::string& key : document_->info_keys()) {
      if (key == "CreationDate") continue;
      properties += QString::fromStdString(key) + u'=' + Text(document_->info_key(key));
    }
    return properties;
  }

  std::vector<poppler::font_info> Fonts() const { return document_->fonts(); }

  QImage PictureOf(int page, double dotsPerInch) const {
    poppler::page_renderer renderer;
    renderer.set_render_hint(poppler::page_renderer::antialiasing, true);
    renderer.set_render_hint(poppler::page_renderer::text_antialiasing, true);
    const auto from = Page(page);
    poppler::image image = renderer.render_page(from.get(), dotsPerInch, dotsPerInch);
    return QImage(reinterpret_cast<const uchar*>(image.const_data()), image.width(), image.height(),
                  image.bytes_per_row(), QImage::Format_ARGB32)
        .convertToFormat(QImage::Format_RGB32);
  }

 private:
  static QString Text(const poppler::ustring& text) {
    const poppler::byte_array bytes = text.to_utf8();
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
  }
  std::unique_ptr<poppler::page> Page(int page) const {
    return std::unique_ptr<poppler::page>(document_->create_page(page - 1));
  }

  std::unique_ptr<poppler::document> document_;
};
