// The labels of the case file, each exactly 16 characters but for the last, and the suffixes behind
// the values. Shared by writer and reader.
#pragma once

#include <QStringView>
#include <array>

namespace Vse {

inline constexpr QStringView kFileMark = u"TELMARION";
inline constexpr qsizetype kHeaderWidth = 49;  // the mark and 40 blanks
inline constexpr qsizetype kLabelWidth = 16;

inline constexpr QStringView kNameLabel = u"Name          : ";
inline constexpr QStringView kSexLabel = u"Sex           : ";
inline constexpr QStringView kBirthLabel = u"Date of birth : ";
inline constexpr QStringView kWeightLabel = u"Body weight   : ";
inline constexpr QStringView kHipLabel = u"Hip           : ";
inline constexpr QStringView kCommentsLabel = u"Comments      : ";

// In the order of the measures.
inline constexpr std::array<QStringView, 8> kMeasureLabels = {
    u"lizm          = ", u"xizm          = ", u"zizm          = ", u"Cizm          = ",
    u"Hizm          = ", u"zasuk         = ", u"theta-CE      = ", u"radius of head= "};

inline constexpr QStringView kRWbLabel = u"R/Wb          = ";
inline constexpr QStringView kThetaRLabel = u"Theta-R       = ";
inline constexpr QStringView kPmaxWbLabel = u"Pmax/Wb       = ";
// Not padded to the others' width. Deliberate.
inline constexpr QStringView kPmaxLabel = u"Pmax = ";

inline constexpr QStringView kWeightSuffix = u" kg";
inline constexpr QStringView kLengthSuffix = u" cm";
inline constexpr QStringView kAngleSuffix = u" °  ";  // its last blank stays with a value read back
inline constexpr QStringView kRadiusSuffix = u" m ";
inline constexpr QStringView kThetaRSuffix = u" ° ";
inline constexpr QStringView kPmaxWbSuffix = u" m^-2";
inline constexpr QStringView kPmaxSuffix = u" Pa";

}  // namespace Vse
