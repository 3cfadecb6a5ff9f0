#pragma once
// The plain rules of the audio and video viewers.

// The page step of the position slider for a maximum of `max`, in units of
// `scale` to the second (1 for the audio viewer, 100 for the video
// viewer's hundredths): two seconds for the shortest files, then a third,
// a fifth and a tenth of the length.
int SliderStep(int max, int scale);

// The window's size when the player sizes itself to a new film, in twips:
// the film's control and the viewer's margins, kept inside the browser
// (its width) and above the main window's lower edge (`lowestBottom`). A
// width under the smallest film window leaves the width as it is.
struct FilmWindow {
  int Width = 0, Height = 0;
};
FilmWindow FilmWindowSize(int playerWidth, int playerHeight, int left, int top, int presentWidth,
                          int browserWidth, int lowestBottom, int titleBarHeight);
