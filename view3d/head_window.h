// The window with the 3D view of the stress on the femoral head, which the user turns with the
// mouse and saves as a bitmap.
#pragma once

#include <QLocale>
#include <QMainWindow>
#include <QPointF>
#include <QTimer>
#include <array>
#include <functional>

#include "platform/file_dialog.h"
#include "platform/message_door.h"
#include "view3d/head_surface.h"
#include "view3d/head_window_controls.h"
#include "view3d/polygon_renderer.h"

// What the window needs of the rest of the program. All of it outlives the window.
struct HeadWindowNeeds {
  std::function<HeadCase()> headCase;  // the case as it is now
  MessageDoor& messages;
  FileDialog& files;
  QLocale locale;
};

class FormGula : public QMainWindow {
  Q_OBJECT
 public:
  explicit FormGula(HeadWindowNeeds needs, QWidget* parent = nullptr);

  // To be called whenever stresses have been computed and shown. A case that the model refuses is
  // shown only before the first call; afterwards the view stays with the case of the last one.
  void CaseComputed();

  const HeadView& View() const { return view_; }

 protected:
  // Opening loads the window afresh; coming back from the taskbar does not.
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  // A frame around the picture while it has the focus.
  void paintEvent(QPaintEvent* event) override;
  // The mouse over the picture, and the keys while it has the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int kDragInterval = 500;  // ms

  void Connect();
  void Load();
  void Activate();
  void ReadCase();
  void ShowLegendCaptions();
  void TellCase();
  void ReadResolutions();

  void RedrawFully();
  void DrawSurfaces(LineStyle outlinesOfSphere, LineStyle outlinesOfArea);
  void DrawPoleAndLabel();
  void DrawAxesAndLabels();
  void TellTurn();
  void PlaceAxisLabels(const std::array<QPointF, 3>& ends);

  void PressMouse(QPointF pixel);
  void MoveMouse(QPointF pixel);
  void ReleaseMouse();
  void TurnByDrag();
  bool TurnByKey(const QKeyEvent& key);
  void Tick();

  void SavePicture();
  void WriteBitmap(const QString& path);

  HeadWindowNeeds needs_;
  HeadControls controls_;
  QTimer* timer_;
  Polygon polygon_;
  HeadView view_;
  bool computed_ = false;  // CaseComputed has been called
  bool loaded_ = false;

  // While the mouse turns the head. Positions in device pixels of the picture.
  bool dragging_ = false;
  QPointF from_;
  QPointF to_;
  float savedFirst_ = 0.0F;
  float savedThird_ = 0.0F;
};
