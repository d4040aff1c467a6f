// What the programs share that draw the windows: the program itself, and a radiograph in its
// measuring window.
#pragma once

#include <QTemporaryDir>

#include "app/main_window.h"
#include "tests/support/marking_hand.h"
#include "tests/support/palettes.h"
#include "tests/support/picture_program.h"

// Fine, and without noise, which would make large files.
inline Phantom::Picture RenderPelvis() {
  Phantom::Setup setup;
  setup.signalToNoise = 0.0;
  setup.ball = Phantom::Ball();
  return Phantom::Render({}, setup);
}

struct PicturedProgram {
  explicit PicturedProgram(const QLocale& locale)
      : window({messages,
                files,
                printers,
                [] { return QDate(2026, 11, 15); },
                locale,
                {QStringLiteral(TELMARION_HELP_DIR)},
                {},
                {},
                {TELMARION_DECODE, {}}}) {}

  // The hand that marks `pelvis`, which is open in the measuring window.
  MarkingHand OpenPelvis() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("pelvis.dcm");
    if (!WritePhantomDicom(path.toStdString(), FileOf(pelvis))) GiveUp("cannot write", path);
    window.MeasureOn(path);
    MarkingHand hand(*window.Measuring(), pelvis);
    if (!hand.WaitForPicture()) GiveUp("not read:", path);
    hand.UseBoneWindow();
    return hand;
  }

  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  MDIForm1 window;
  Phantom::Picture pelvis = RenderPelvis();
};
