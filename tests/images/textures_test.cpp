// One texture for each picture file, however often it is loaded.
#include "images/textures.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include "images/images.h"
#include "support/engine_test.h"
#include "support/sdl_calls.h"
#include "units/units.h"

class Textures : public EngineTest {};

static const char kPicture[] = "levels/level1/a.bmp";

// The moment of the file's last change, in nanoseconds.
static int64_t changeTime(const char* path) {
    struct stat status;
    EXPECT_EQ(0, stat(path, &status)) << path;
    return int64_t{status.st_ctim.tv_sec} * 1000000000 + status.st_ctim.tv_nsec;
}

// Writes the picture again until the file system's clock, which is a coarse one, tells a new time.
static void rewritePicture(int w, int h, Uint32 colour) {
    const int64_t before = changeTime(kPicture);
    do {
        writePicture(kPicture, w, h, colour);
    } while (changeTime(kPicture) == before);
}

// Another file takes the place of the picture.
static void replacePicture(int w, int h, Uint32 colour) {
    writePicture("other.bmp", w, h, colour);
    std::filesystem::rename("other.bmp", kPicture);
}

static SDL_Texture* textureOf(int32_t id) {
    return gImages.at(static_cast<size_t>(id)).texture;
}

static SDL_Texture* loadAgain() {
    return textureOf(loadImageFile(kPicture));
}

TEST_F(Textures, PictureLoadedAgainIsOneTexture) {
    writePicture(kPicture, 4, 5, kRed);
    recordCalls();
    EXPECT_EQ("012", runStatements("print(loadimage(\"a.bmp\")); print(loadimage(\"a.bmp\"));"
                                   "print(loadimage(\"a.bmp\"));"));
    EXPECT_NE(nullptr, textureOf(0));
    EXPECT_EQ(textureOf(0), textureOf(1));
    EXPECT_EQ(textureOf(0), textureOf(2));
    EXPECT_EQ(1u, countCalls("IMG_LoadTexture"));
    EXPECT_EQ(3u, countCalls("SDL_RenderCopy(whole, 0, 0, 4, 5)")) << "each attaching draws";
}

TEST_F(Textures, ImagesOfOneTextureHavePlacesAndSizesOfTheirOwn) {
    writePicture(kPicture, 20, 20, kRed);
    runStatements(
        "loadimage(\"a.bmp\"); changesizeimage(0, 5, 5); loadimage(\"a.bmp\");"
        "moveimage(1, 100, 100); showimage(1, 1);");
    EXPECT_EQ(20, getW(gImages.at(1)));
    EXPECT_EQ(kRed, framePixel(119, 119));
    EXPECT_EQ(kWhite, framePixel(2, 2)) << "the other one is hidden";
}

TEST_F(Textures, UnitsShareTheTextureOfTheirType) {
    recordCalls();
    runStatements("createunit(0, 10, 10); createunit(0, 50, 50);");
    EXPECT_EQ(1u, countCalls("IMG_LoadTexture"));
    EXPECT_EQ(gUnits.at(0).image.texture, gUnits.at(1).image.texture);
    EXPECT_EQ(kBlue, framePixel(15, 15));
    EXPECT_EQ(kBlue, framePixel(55, 55));
}

TEST_F(Textures, FileThatTookThePlaceIsLoadedAnew) {
    writePicture(kPicture, 8, 8, kRed);
    runStatements("loadimage(\"a.bmp\"); showimage(0, 1);");
    replacePicture(8, 8, kGreen);
    runStatements("loadimage(\"a.bmp\"); moveimage(1, 100, 0); showimage(1, 1);");
    EXPECT_EQ(kRed, framePixel(4, 4)) << "the first image keeps its picture";
    EXPECT_EQ(kGreen, framePixel(104, 4));
    EXPECT_EQ(textureOf(1), loadAgain()) << "the newest is shared from then on";
}

TEST_F(Textures, FileWrittenAgainInPlaceIsLoadedAnew) {
    writePicture(kPicture, 8, 8, kRed);
    SDL_Texture* first = loadAgain();
    rewritePicture(8, 8, kGreen);
    EXPECT_NE(first, loadAgain());
    gImages.back().visible = true;
    EXPECT_EQ(kGreen, framePixel(4, 4));
}

TEST_F(Textures, FileOfAnotherSizeIsLoadedAnew) {
    writePicture(kPicture, 8, 8, kRed);
    SDL_Texture* first = loadAgain();
    writePicture(kPicture, 9, 7, kRed);
    EXPECT_NE(first, loadAgain());
    EXPECT_EQ(9, getW(gImages.back()));
    EXPECT_EQ(7, getH(gImages.back()));
}

TEST_F(Textures, LinkThatPointsElsewhereIsAnotherFile) {
    writePicture("levels/level1/red.bmp", 8, 8, kRed);
    writePicture("levels/level1/green.bmp", 8, 8, kGreen);
    std::filesystem::create_symlink("red.bmp", kPicture);
    SDL_Texture* first = loadAgain();
    std::filesystem::remove(kPicture);
    std::filesystem::create_symlink("green.bmp", kPicture);
    EXPECT_NE(first, loadAgain());
}

TEST_F(Textures, FailedLoadIsTriedAgain) {
    const std::string missing = runStatements("loadimage(\"a.bmp\");");
    EXPECT_EQ(0u, missing.find("\n1Unable to load image levels/level1/a.bmp! SDL Error: "));
    EXPECT_EQ(missing, runStatements("loadimage(\"a.bmp\");")) << "it fails in the same words";
    writePicture(kPicture, 8, 8, kRed);
    EXPECT_EQ("2", runStatements("print(loadimage(\"a.bmp\"));"));
    EXPECT_NE(nullptr, textureOf(2));
}

TEST_F(Textures, PictureThatIsGoneFailsToLoad) {
    writePicture(kPicture, 8, 8, kRed);
    loadAgain();
    std::filesystem::remove(kPicture);
    const std::string output = runStatements("loadimage(\"a.bmp\");");
    EXPECT_NE(std::string::npos, output.find("\nCant load image: levels/level1/a.bmp.   "));
    EXPECT_EQ(nullptr, textureOf(1));
}

TEST_F(Textures, PictureThatBecameUnreadableFailsToLoad) {
    writePicture(kPicture, 8, 8, kRed);
    loadAgain();
    writeFile(kPicture, "no picture any more");
    testing::internal::CaptureStdout();
    EXPECT_EQ(nullptr, loadAgain());
    EXPECT_NE("", testing::internal::GetCapturedStdout());
}

// What is read from a pipe is gone: the load must find all of it.
TEST_F(Textures, NothingIsReadFromAPipeBeforeItIsLoaded) {
    ASSERT_EQ(0, mkfifo(kPicture, 0600));
    const int pipe = open(kPicture, O_RDWR | O_CLOEXEC);
    const std::string header = "BM" + std::string(16, '\0') + std::string(8, '\x7F');
    ASSERT_EQ(26, write(pipe, header.data(), header.size()));
    int atTheLoad = -1;
    recordCalls();
    gOnCall = [&](const std::string& call) {
        if (call.find("IMG_LoadTexture") == 0) ioctl(pipe, FIONREAD, &atTheLoad);
    };
    runStatements("loadimage(\"a.bmp\");");
    gOnCall = nullptr;
    close(pipe);
    EXPECT_EQ(26, atTheLoad);
}

TEST_F(Textures, CloseDestroysEachTextureOnce) {
    writePicture(kPicture, 8, 8, kRed);
    writePicture("levels/level1/b.bmp", 8, 8, kGreen);
    runStatements("loadimage(\"a.bmp\"); loadimage(\"b.bmp\"); loadimage(\"a.bmp\");");
    replacePicture(8, 8, kBlue);
    runStatements("loadimage(\"b.bmp\"); loadimage(\"a.bmp\"); loadimage(\"a.bmp\");");
    recordCalls();
    closeEngine();
    const std::vector<std::string> inOrder = {callOn("SDL_DestroyTexture", textureOf(0)),
                                              callOn("SDL_DestroyTexture", textureOf(1)),
                                              callOn("SDL_DestroyTexture", textureOf(4))};
    EXPECT_EQ(inOrder, recordedCalls({"SDL_DestroyTexture"}));
}

TEST_F(Textures, NothingIsLoadedAfterTheClose) {
    writePicture(kPicture, 8, 8, kRed);
    loadAgain();
    closeEngine();
    testing::internal::CaptureStdout();
    EXPECT_EQ(nullptr, loadAgain());
    EXPECT_EQ(0u, testing::internal::GetCapturedStdout().find("\n1Unable to load image "));
}
