// What a long run measures of its own process, and how growth is distinguished from noise.
#pragma once

#include <string>
#include <vector>

struct Sample {
  int rounds = 0;            // done so far
  double residentKiB = 0.0;  // memory that the process really occupies
  double heapKiB = 0.0;      // memory that the program has asked for and not given back
  double handles = 0.0;      // open files, pipes and sockets
  double threads = 0.0;
  double processes = 0.0;  // started by this one and still there, dead ones included
  double widgets = 0.0;
  double objects = 0.0;      // of Qt, below the windows
  double processorMs = 0.0;  // a round, since the sample before
  double wallMs = 0.0;       // likewise, by the clock on the wall
};

// Begins a stretch of rounds when it is made, and measures at its end.
class Stretch {
 public:
  Stretch();
  Sample Measure(int roundsInStretch, int roundsDone) const;

 private:
  double processorStart_;
  double wallStart_;
};

// How much more than before is still noise: so much, and so large a part of what was there.
struct Allowance {
  double absolute = 0.0;
  double relative = 0.0;
};

// Compares the median of the last quarter of the samples with that of the second; the first quarter
// is for warming up. Gives a sentence when there is more than allowed, else an empty text.
std::string FindGrowth(const std::vector<Sample>& samples, double Sample::*figure,
                       const std::string& name, const Allowance& allowed);

// A line of the table, and its head.
std::string TableHead();
std::string TableLine(const Sample& sample);
