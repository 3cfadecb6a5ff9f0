#pragma once
// The password of the data file. The file is made with it by the build and
// opened with it by the program; a compacted copy keeps it.

inline constexpr char DataFilePassword[] = "gladeon48172";
