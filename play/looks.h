// The commands that look: at the frame, the title, the registries. They change nothing, and work
// behind the level's end too, as long as the engine is up.
#pragma once

#include <string>

#include "play/answers.h"

// Folders with a slash at their end: where the names in a play lead, and where pictures are saved.
extern std::string gPlayFolder;
extern std::string gOutputFolder;

Answer doPixel(Words& words);    // X Y COLOUR
Answer doCount(Words& words);    // X Y W H COLOUR [is|over|under N]
Answer doTitle(Words& words);    // "TEXT"
Answer doPicture(Words& words);  // FILE [same as GOLDEN [within N]]

// ["TEXT"]: all records, or those that hold the text; one at least must.
Answer doTimers(Words& words);
Answer doImages(Words& words);
Answer doTexts(Words& words);
Answer doUnits(Words& words);
