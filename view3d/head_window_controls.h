// The controls of the 3D view and their layout.
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
  RasterView* picture = nullptr;
  QLabel* poleLabel = nullptr;  // on the picture

  QComboBox* resolutionOfSphere = nullptr;
  QComboBox* resolutionOfArea = nullptr;
  QCheckBox* outlinesOfSphere = nullptr;
  QCheckBox* outlinesOfArea = nullptr;
  QCheckBox* showPole = nullptr;

  QWidget* axesGround = nullptr;  // the axes and their labels
  PictureView* axes = nullptr;
  QLabel* axisX = nullptr;  // beside the end of its axis, over the picture's edge where need be
  QLabel* axisY = nullptr;
  QLabel* axisZ = nullptr;

  PictureView* legend = nullptr;
  QLabel* scaleTitle = nullptr;
  QLabel* scaleTop = nullptr;
  QLabel* scaleMiddle = nullptr;
  QLabel* scaleBottom = nullptr;

  QProgressBar* progress = nullptr;
  QPushButton* savePicture = nullptr;
};

// Makes the controls, empty, and lays them out in the window: the picture takes the space, the rest
// is in a narrow column on the right.
HeadControls MakeHeadControls(QMainWindow& mainWindow);

// Gives the labels on the pictures the pictures' ground, which stays light on a dark desktop.
void FollowPalette(const HeadControls& controls, const QPalette& palette);
