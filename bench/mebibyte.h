// Comments of a mebibyte in a file, each of one kind, and the benchmarks that take them.
#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QString>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

inline std::vector<std::pair<std::string, QString>> Mebibytes() {
  const std::vector<std::pair<std::string, QString>> units = {
      {"no blanks", QStringLiteral("x")},
      {"blanks", QStringLiteral(" ")},
      {"short words", QStringLiteral("a ")},
      {"words", QStringLiteral("Control after two years. ")},
      {"long words", QString(999, u'x') + u' '},
      {"tabs", QStringLiteral("\t")},
      {"line feeds", QStringLiteral("\n")},
      {"short lines", QStringLiteral("x\n")},
      {"right to left", QStringLiteral("א")},
      {"both directions", QStringLiteral("aא")},
      {"combining", QStringLiteral("a\u0301")},
      {"emoji", QStringLiteral("\U0001F600")},
      {"Chinese", QStringLiteral("中")}};
  constexpr qsizetype kMebibyte = 1 << 20;
  std::vector<std::pair<std::string, QString>> texts;
  for (const auto& [name, unit] : units) {
    texts.emplace_back(name, unit.repeated(kMebibyte / unit.toUtf8().size()));
  }
  return texts;
}

struct TextBenchmark {
  std::string name;
  void (*run)(benchmark::State&, const QString&);
};

// Runs each with every mebibyte, and what else is registered, without a screen.
inline int RunWithMebibytes(int argc, char** argv,
                            std::initializer_list<TextBenchmark> benchmarks) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  for (const auto& [kind, text] : Mebibytes()) {
    for (const TextBenchmark& each : benchmarks) {
      const std::string name = each.name + '/' + kind;
      benchmark::RegisterBenchmark(name.c_str(), each.run, text)->Unit(benchmark::kMillisecond);
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
