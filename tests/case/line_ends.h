// What editors, mail programs and converters make of a case file's line ends.
#pragma once

#include <QByteArray>
#include <QList>
#include <utility>

struct LineEndForm {
  const char* name;
  QList<std::pair<QByteArray, QByteArray>> replacements;  // in order
};

inline const QList<LineEndForm>& LineEndForms() {
  static const QList<LineEndForm> forms = {
      {"Unchanged", {}},
      {"CrLfAlone", {{"\n\r\n", "\n"}, {"\r\n", "\n"}, {"\n", "\r\n"}}},
      {"LfAlone", {{"\n\r\n", "\n"}, {"\r\n", "\n"}}},
      {"CrDropped", {{"\r", ""}}},
      {"EveryLfAsCrLf", {{"\r\n", "\n"}, {"\n", "\r\n"}}},
      {"LfToCrLfBlindly", {{"\n", "\r\n"}}},
      {"DoubledLf", {{"\r", ""}, {"\n", "\n\n"}}},
      {"DoubledCrLf", {{"\r\n", "\n"}, {"\n", "\r\n\r\n"}}},
      {"CrAlone", {{"\r\n", "\n"}, {"\n", "\r"}}}};
  return forms;
}

inline QByteArray InForm(QByteArray file, const LineEndForm& form) {
  for (const auto& [from, to] : form.replacements) file.replace(from, to);
  return file;
}
