// The header of the case file and the labels of the patient's records. Those of measurements and
// results are in case_places.h.
#pragma once

#include <QStringView>

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

}  // namespace Vse
