#include <gtest/gtest.h>

#include <QSize>

// The size rule of the metafile helper, which is a program of its own and
// not part of the library: its one source file is compiled in here.
#include "decoder/Fit.cpp"

namespace {

TEST(MetafileFitTest, SizesKeepTheAspectWithinTheLimitAndTheFit) {
  using decoder::OutputSize;
  EXPECT_EQ(OutputSize(QSize(400, 300), QSize()), QSize(400, 300));
  EXPECT_EQ(OutputSize(QSize(400, 300), QSize(200, 200)), QSize(200, 150));
  EXPECT_EQ(OutputSize(QSize(100, 50), QSize(200, 200)), QSize(100, 50));
  EXPECT_EQ(OutputSize(QSize(16000, 8000), QSize()), QSize(8000, 4000));
  EXPECT_EQ(OutputSize(QSize(), QSize(64, 64)), QSize(1, 1));

  // A header frame of 73 x 1048576 pixels, asked to fit 2047868928 x 130:
  // the width scaled to nothing made the fit's own, far too wide, size the
  // result. A picture that thin keeps one pixel of width, and no side is
  // ever beyond the limit.
  EXPECT_EQ(OutputSize(QSize(73, 1048576), QSize(2047868928, 130)), QSize(1, 130));
  EXPECT_EQ(OutputSize(QSize(73, 1048576), QSize()), QSize(1, 8000));
  EXPECT_EQ(OutputSize(QSize(73, 1048576), QSize(64, 64)), QSize(1, 64));
  EXPECT_EQ(OutputSize(QSize(5, 5), QSize(100000, 100000)), QSize(5, 5));
}

}  // namespace
