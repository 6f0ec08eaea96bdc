// The colour tables the image tests read: BT.601 from height 0 and BT.709 from 720, in
// both directions, with the coefficients of the two recommendations. Kept here rather
// than read from data/system.conf, so that the hand-worked values stay true whatever
// the installation's file holds.
#pragma once

namespace MediaTest {

inline constexpr const char* kColorTableText =
    "[YUV2RGB]\n"
    "0=BT.601,0,1,0,1.402,1,-0.344136,-0.714136,1,1.772,0\n"
    "1=BT.709,720,1,0,1.5748,1,-0.187324,-0.468124,1,1.8556,0\n"
    "[RGB2YUV]\n"
    "0=BT.601,0,0.299,0.587,0.114,-0.168736,-0.331264,0.5,0.5,-0.418688,-0.081312\n"
    "1=BT.709,720,0.2126,0.7152,0.0722,-0.114572,-0.385428,0.5,0.5,-0.454153,-0.045847\n";

}  // namespace MediaTest
