// The controls of the 3D view and where they stand.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include "platform/picture_view.h"
#include "platform/raster_view.h"

// All belong to the window. Object names are the system's names, accessible names the captions.
struct HeadControls {
  RasterView* picTest = nullptr;
  QLabel* LabelP = nullptr;  // on picTest

  QComboBox* Combo1 = nullptr;  // resolution of the articular sphere
  QComboBox* Combo2 = nullptr;  // resolution of the weight-bearing area
  QCheckBox* Check1 = nullptr;  // outlines of the sphere's facets
  QCheckBox* Check2 = nullptr;  // outlines of the area's facets
  QCheckBox* Check3 = nullptr;  // pole of the stress

  QWidget* axesGround = nullptr;  // CoorPic and its labels
  PictureView* CoorPic = nullptr;
  QLabel* Labelx = nullptr;  // beside CoorPic's axes, over its edges where need be
  QLabel* Labely = nullptr;
  QLabel* Labelz = nullptr;

  PictureView* Mierka = nullptr;
  QLabel* scaleTitle = nullptr;
  QLabel* scaleTop = nullptr;
  QLabel* scaleMiddle = nullptr;
  QLabel* scaleBottom = nullptr;

  QProgressBar* progress = nullptr;
  QPushButton* Command1 = nullptr;
};

// Makes the controls, empty, and lays them out in the window: the picture takes the space, the rest
// stands in a narrow column on the right.
HeadControls MakeHeadControls(QMainWindow& mainWindow);

// Gives the labels on the pictures the pictures' ground, which stays light on a dark desktop.
void FollowPalette(const HeadControls& controls, const QPalette& palette);
