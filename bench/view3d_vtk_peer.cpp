// The same two meshes in VTK, one flat colour a facet, parallel projection.
#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkUnsignedCharArray.h>

#include <QRegularExpression>
#include <array>
#include <optional>

#include "bench/view3d_peer.h"
#include "view3d/stress_colour.h"

namespace {

constexpr Colour kSphereColour = 0xDD5436;

class VtkMesh {
 public:
  VtkMesh() {
    colours_->SetNumberOfComponents(3);
    data_->SetPoints(points_);
    data_->SetPolys(facets_);
    data_->GetCellData()->SetScalars(colours_);
  }

  // `nearer` keeps the area in front of the sphere on which it lies.
  template <class ColourOf>
  void Add(const SampledSurface& s, double nearer, const ColourOf& colourOf) {
    const vtkIdType first = points_->GetNumberOfPoints();
    const auto width = static_cast<vtkIdType>(s.facetColumns + 1);
    for (std::size_t row = 1; row <= s.facetRows + 1; ++row) {
      for (std::size_t column = 1; column <= s.facetColumns + 1; ++column) {
        points_->InsertNextPoint(double(s.x(row, column)), -double(s.y(row, column)),
                                 double(s.depth(row, column)) + nearer);
      }
    }
    for (std::size_t row = 1; row <= s.facetRows; ++row) {
      for (std::size_t column = 1; column <= s.facetColumns; ++column) {
        const vtkIdType corner = first + vtkIdType(row - 1) * width + vtkIdType(column - 1);
        const std::array<vtkIdType, 4> quad = {corner, corner + 1, corner + width + 1,
                                               corner + width};
        facets_->InsertNextCell(4, quad.data());
        AddColour(colourOf(row, column));
      }
    }
  }

  vtkPolyData* Data() { return data_; }

 private:
  void AddColour(Colour colour) {
    const std::array<unsigned char, 3> channels = {static_cast<unsigned char>(colour & 0xFFU),
                                                   static_cast<unsigned char>(colour >> 8U & 0xFFU),
                                                   static_cast<unsigned char>(colour >> 16U)};
    colours_->InsertNextTypedTuple(channels.data());
  }

  vtkNew<vtkPoints> points_;
  vtkNew<vtkCellArray> facets_;
  vtkNew<vtkUnsignedCharArray> colours_;
  vtkNew<vtkPolyData> data_;
};

class VtkPeer final : public HeadPeer {
 public:
  VtkPeer(const RasterBox& picture, const HeadView& view) : size_(picture.PixelSize()) {
    const SampledSurface sphere = SampleSphere(picture, view);
    const SampledSurface area = SampleArea(picture, view);
    mesh_.Add(sphere, 0.0, [](std::size_t, std::size_t) { return kSphereColour; });
    mesh_.Add(area, 0.5, [&](std::size_t row, std::size_t column) {
      return StressColour(double(area.stress(row, column)));
    });
    SetUp(picture.BackColor());
  }

  QImage Draw(double degrees) override {
    actor_->SetOrientation(0.0, degrees, 0.0);
    window_->Render();
    vtkNew<vtkUnsignedCharArray> pixels;
    window_->GetRGBACharPixelData(0, 0, size_.width() - 1, size_.height() - 1, 0, pixels);
    return QImage(pixels->GetPointer(0), size_.width(), size_.height(), QImage::Format_RGBX8888)
        .mirrored()
        .convertToFormat(QImage::Format_RGB32);
  }

  QString Renderer() const override {
    const QString report = QString::fromLatin1(window_->ReportCapabilities());
    static const QRegularExpression name(QStringLiteral("OpenGL renderer string: *([^\n]*)"));
    return name.match(report).captured(1);
  }

 private:
  void SetUp(Colour ground) {
    mapper_->SetInputData(mesh_.Data());
    actor_->SetMapper(mapper_);
    actor_->GetProperty()->LightingOff();
    const QPointF centre(size_.width() / 2.0, size_.height() / 2.0);
    actor_->SetOrigin(centre.x(), -centre.y(), 0.0);
    renderer_->AddActor(actor_);
    const QColor colour = PaintColour(ground, QPalette());
    renderer_->SetBackground(colour.redF(), colour.greenF(), colour.blueF());
    vtkCamera* camera = renderer_->GetActiveCamera();
    camera->ParallelProjectionOn();
    camera->SetParallelScale(size_.height() / 2.0);
    camera->SetFocalPoint(centre.x(), -centre.y(), 0.0);
    camera->SetPosition(centre.x(), -centre.y(), 1000.0);
    camera->SetClippingRange(1.0, 2000.0);
    window_->SetOffScreenRendering(1);
    window_->SetMultiSamples(0);
    window_->SetSize(size_.width(), size_.height());
    window_->AddRenderer(renderer_);
  }

  QSize size_;
  VtkMesh mesh_;
  vtkNew<vtkPolyDataMapper> mapper_;
  vtkNew<vtkActor> actor_;
  vtkNew<vtkRenderer> renderer_;
  vtkNew<vtkRenderWindow> window_;
};

}  // namespace

std::unique_ptr<HeadPeer> MakePeer(const RasterBox& picture, const HeadView& view) {
  return std::make_unique<VtkPeer>(picture, view);
}
