// What the programs have in common that write pictures into a folder named on the command line.
#pragma once

#include <QApplication>
#include <QDir>
#include <QString>
#include <QStyleFactory>
#include <cstdio>
#include <cstdlib>

// Ends the program with a failure, saying what is wrong with what.
[[noreturn]] inline void GiveUp(const char* trouble, const QString& what) {
  std::fprintf(stderr, "%s %s\n", trouble, qPrintable(what));
  std::exit(EXIT_FAILURE);
}

// The program's main(): windows without a screen, in Qt's own style.
inline int RunPictureProgram(int argc, char** argv, void (*saveAll)(const QDir& folder)) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return EXIT_FAILURE;
  }
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  saveAll(QDir(argv[1]));
  return EXIT_SUCCESS;
}
