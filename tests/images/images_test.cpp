#include "images/images.h"

#include <gtest/gtest.h>

#include "images/textures.h"
#include "support/engine_test.h"
#include "support/sdl_calls.h"

class Images : public EngineTest {};

TEST_F(Images, IdentifiersCountFromZeroInOrderOfLoading) {
    writePicture("levels/level1/a.bmp", 4, 4, kRed);
    EXPECT_EQ("012", runStatements("print(loadimage(\"a.bmp\")); print(loadimage(\"a.bmp\"));"
                                   "print(loadimage(\"a.bmp\"));"));
}

TEST_F(Images, FailedLoadConsumesItsIdentifier) {
    writePicture("levels/level1/a.bmp", 4, 4, kRed);
    testing::internal::CaptureStdout();
    EXPECT_EQ(0, loadImageFile("levels/level1/none.bmp"));
    EXPECT_EQ(1, loadImageFile("levels/level1/a.bmp"));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(nullptr, gImages[0].texture);
    EXPECT_NE(nullptr, gImages[1].texture);
}

TEST_F(Images, LoadedImageIsHiddenAtTheOriginInTheFilesSize) {
    writePicture("levels/level1/a.bmp", 37, 21, kRed);
    runStatements("loadimage(\"a.bmp\");");
    const Image& image = gImages.at(0);
    EXPECT_FALSE(isVisible(image));
    EXPECT_EQ(0, getX(image));
    EXPECT_EQ(0, getY(image));
    EXPECT_EQ(37, getW(image));
    EXPECT_EQ(21, getH(image));
    EXPECT_EQ("levels/level1/a.bmp", getPath(image));
    EXPECT_EQ(kWhite, framePixel(10, 10));
    runStatements("showimage(0, 1);");
    EXPECT_EQ(kRed, framePixel(10, 10));
}

// SDL words the reason in the output; what the engine says around it is exact.
TEST_F(Images, MissingPictureIsReportedTwice) {
    const std::string output = runStatements("loadimage(\"none.bmp\");");
    const std::string first = "\n1Unable to load image levels/level1/none.bmp! SDL Error: ";
    const std::string second = "\nCant load image: levels/level1/none.bmp.   ";
    EXPECT_EQ(0u, output.find(first)) << output;
    const size_t place = output.find(second);
    ASSERT_NE(std::string::npos, place) << output;
    EXPECT_GT(place, first.size()) << "no reason of SDL's after the first message";
    EXPECT_GT(output.size(), place + second.size()) << "no reason after the second message";
    EXPECT_NE('\n', output.back());
}

TEST_F(Images, FailedLoadMarksTheEventRecordAsQuitWithoutEndingTheLoop) {
    pushMotion(5, 6);
    drain();
    runStatements("loadimage(\"none.bmp\");");
    EXPECT_EQ(Uint32{SDL_QUIT}, gEvent.type);
    EXPECT_FALSE(drainEvents());
}

TEST_F(Images, FailedImageHasSizeZero) {
    runStatements("loadimage(\"none.bmp\");");
    EXPECT_EQ(0, getW(gImages.at(0)));
    EXPECT_EQ(0, getH(gImages.at(0)));
}

TEST_F(Images, AttachingATextureTakesItsSizeAndDrawsItAtOnce) {
    writePicture("levels/level1/a.bmp", 20, 20, kRed);
    SDL_RenderClear(gRenderer);
    runStatements("loadimage(\"a.bmp\");");
    const SDL_Rect pixel = {10, 10, 1, 1};
    Uint32 colour = 0;
    SDL_RenderReadPixels(gRenderer, &pixel, SDL_PIXELFORMAT_ARGB8888, &colour, 4);
    EXPECT_EQ(kRed, colour & 0xFFFFFF);
    EXPECT_EQ(kWhite, framePixel(10, 10)) << "the next frame clears it away";
}

TEST_F(Images, AttachedTextureIsDrawnWhereTheImageStands) {
    writePicture("a.bmp", 11, 12, kRed);
    Image image;
    setPosition(image, 40, 50);
    setSize(image, 7, 8);
    recordCalls();
    setTexture(image, loadTexture("a.bmp"));
    EXPECT_EQ(1u, countCalls("SDL_RenderCopy(whole, 40, 50, 11, 12)"));
    EXPECT_EQ(1u, countCalls("SDL_RenderCopy"));
}

TEST_F(Images, NullTextureLeavesTheSizeAlone) {
    Image image;
    setSize(image, 7, 8);
    setTexture(image, nullptr);
    EXPECT_EQ(7, getW(image));
    EXPECT_EQ(8, getH(image));
}

TEST_F(Images, SettersSetWhatTheyName) {
    Image image;
    EXPECT_FALSE(isVisible(image));
    EXPECT_EQ("", getPath(image));
    setPosition(image, -1, 2);
    setSize(image, 3, -4);
    setSparePair(image, 5, 6);
    setSpare(image, 7);
    EXPECT_EQ(-1, getRect(image).x);
    EXPECT_EQ(2, getRect(image).y);
    EXPECT_EQ(3, getRect(image).w);
    EXPECT_EQ(-4, getRect(image).h);
    EXPECT_EQ(5, image.spareX);
    EXPECT_EQ(6, image.spareY);
    EXPECT_EQ(7, image.spare);
}

// System pictures -------------------------------------------------------------------------------

TEST_F(Images, SelectionFrameIsTheOnlySystemPicture) {
    ASSERT_EQ(1u, gSystemPictures.size());
    EXPECT_EQ("SysPics/select.bmp", getPath(gSystemPictures[0]));
    EXPECT_FALSE(isVisible(selectionFrame()));
    EXPECT_EQ(8, getW(selectionFrame()));
}

TEST_F(Images, MissingSystemPictureIsReportedButCountsAsSuccess) {
    gSystemPictures.clear();
    std::filesystem::remove("SysPics/select.bmp");
    const std::string output = outputOf([] { EXPECT_TRUE(loadSystemPictures()); });
    EXPECT_EQ(0u, output.find("\n1Unable to load image SysPics/select.bmp! SDL Error: ")) << output;
    EXPECT_NE(std::string::npos, output.find("\nCant load SYSimage: SysPics/select.bmp.   "));
    EXPECT_EQ(1u, gSystemPictures.size());
    EXPECT_EQ(Uint32{SDL_QUIT}, gEvent.type);
}

// Picture list ----------------------------------------------------------------------------------

static std::string readList(const std::string& bytes) {
    writeFile("PicturesPath.txt", bytes);
    return outputOf([] { EXPECT_TRUE(loadPictureList()); });
}

class ImagesAtStartUp : public FolderTest {};

TEST_F(ImagesAtStartUp, PictureListIsNotRead) {
    writeFile("PicturesPath.txt", "SysPics/select.bmp\n");
    EXPECT_EQ("", outputOf([] { startEngine(); }));
    EXPECT_TRUE(gImages.empty());
    closeEngine();
}

TEST_F(Images, PictureListWithFinalLineFeed) {
    EXPECT_EQ("\na.bmp\nb.bmp", readList("a.bmp\nb.bmp\n"));
    ASSERT_EQ(2u, gImages.size());
    EXPECT_EQ("b.bmp", getPath(gImages[1]));
    EXPECT_FALSE(isVisible(gImages[1]));
    EXPECT_EQ(nullptr, gImages[1].texture);
}

TEST_F(Images, PictureListWithoutFinalLineFeed) {
    EXPECT_EQ("\na.bmp\nb.bmp", readList("a.bmp\nb.bmp"));
    EXPECT_EQ(2u, gImages.size());
}

TEST_F(Images, PictureListLineKeepsItsCarriageReturnAndFailsToLoad) {
    writePicture("a.bmp", 4, 4, kRed);
    EXPECT_EQ("\na.bmp\r", readList("a.bmp\r\n"));
    ASSERT_EQ(1u, gImages.size());
    EXPECT_EQ("a.bmp\r", getPath(gImages[0]));
    const std::string output = outputOf([] { EXPECT_FALSE(loadListedTextures()); });
    EXPECT_EQ(0u, output.find("\n1Unable to load image a.bmp\r! SDL Error: ")) << output;
    EXPECT_NE(std::string::npos, output.find("Cant load image: a.bmp\r.   ")) << output;
    EXPECT_EQ(std::string::npos, output.find("\nCant load image: ")) << output;
}

TEST_F(Images, PictureListIsTakenAsItStands) {
    EXPECT_EQ("\n // no comment \n\n\\", readList(" // no comment \n\n\\\n"));
    ASSERT_EQ(3u, gImages.size());
    EXPECT_EQ(" // no comment ", getPath(gImages[0]));
    EXPECT_EQ("", getPath(gImages[1]));
}

TEST_F(Images, EmptyPictureListGivesNothing) {
    EXPECT_EQ("", readList(""));
    EXPECT_TRUE(gImages.empty());
    EXPECT_EQ("", outputOf([] { EXPECT_TRUE(loadListedTextures()); }));
}

TEST_F(Images, PictureListHasNoLimit) {
    std::string list;
    for (int i = 0; i < 3000; i++)
        list += std::string(500, 'x') + "\n";
    readList(list);
    EXPECT_EQ(3000u, gImages.size());
    EXPECT_EQ(500u, getPath(gImages[2999]).size());
}

TEST_F(Images, MissingPictureListIsReported) {
    EXPECT_EQ("\nCan't load PicturesPath.txt", outputOf([] { EXPECT_FALSE(loadPictureList()); }));
}

TEST_F(Images, ListedTexturesAreLoadedHiddenInTheirSize) {
    writePicture("a.bmp", 11, 12, kRed);
    readList("a.bmp\n");
    setVisible(gImages[0], true);
    EXPECT_EQ("", outputOf([] { EXPECT_TRUE(loadListedTextures()); }));
    EXPECT_NE(nullptr, gImages[0].texture);
    EXPECT_EQ(11, getW(gImages[0]));
    EXPECT_EQ(12, getH(gImages[0]));
    EXPECT_FALSE(isVisible(gImages[0]));
}

TEST_F(Images, ListedTexturesStopAtTheFirstThatFails) {
    writePicture("a.bmp", 4, 4, kRed);
    readList("a.bmp\nnone.bmp\na.bmp\n");
    outputOf([] { EXPECT_FALSE(loadListedTextures()); });
    EXPECT_NE(nullptr, gImages[0].texture);
    EXPECT_EQ(nullptr, gImages[1].texture);
    EXPECT_EQ(nullptr, gImages[2].texture);
}

// Bad pictures ----------------------------------------------------------------------------------

// The script goes on after a picture that cannot be loaded, and the frame is drawn.
static void expectUnusable(const std::string& name) {
    const std::string path = "levels/level1/" + name;
    const std::string output = runStatements("a = loadimage(\"" + name +
                                             "\"); showimage(a, 1);"
                                             "changesizeimage(a, 640, 480); print(7);");
    EXPECT_EQ(0u, output.find("\n1Unable to load image " + path + "! SDL Error: ")) << output;
    EXPECT_NE(std::string::npos, output.find("\nCant load image: " + path + ".   ")) << output;
    EXPECT_EQ('7', output.back());
    EXPECT_EQ(kWhite, framePixel(100, 100));
}

TEST_F(Images, EmptyFileIsNoPicture) {
    writeFile("levels/level1/a.bmp", "");
    expectUnusable("a.bmp");
}

TEST_F(Images, FolderIsNoPicture) {
    std::filesystem::create_directories("levels/level1/a.bmp");
    expectUnusable("a.bmp");
}

TEST_F(Images, TextIsNoPicture) {
    writeFile("levels/level1/a.bmp", "BM is how this text begins, and that is all of it");
    expectUnusable("a.bmp");
}

TEST_F(Images, EmptyNameIsTheLevelFolder) {
    const std::string output = runStatements("print(loadimage(\"\"));");
    EXPECT_EQ(0u, output.find("\n1Unable to load image levels/level1/! SDL Error: ")) << output;
    EXPECT_EQ('0', output.back());
}

static std::string bytesOf(const std::string& path) {
    FILE* file = std::fopen(path.c_str(), "rb");
    std::string bytes(4096, '\0');
    bytes.resize(std::fread(&bytes[0], 1, bytes.size(), file));
    std::fclose(file);
    return bytes;
}

TEST_F(Images, PictureCutAnywhereNeverCrashes) {
    writePicture("whole.bmp", 16, 16, kRed);
    const std::string whole = bytesOf("whole.bmp");
    ASSERT_GT(whole.size(), 16u * 16 * 3);
    for (size_t size = 0; size < 60; size++) {
        writeFile("levels/level1/a.bmp", whole.substr(0, size));
        EXPECT_NE("0", runStatements("loadimage(\"a.bmp\"); print(0);")) << size << " bytes";
    }
    EXPECT_EQ(60u, gImages.size());
    EXPECT_EQ(kWhite, framePixel(5, 5));
}

static void setWord(std::string& bytes, size_t place, uint32_t value) {
    for (size_t i = 0; i < 4; i++)
        bytes.at(place + i) = static_cast<char>(value >> (8 * i));
}

// Width and height of a BMP are at the bytes 18 and 22 of its file.
TEST_F(Images, PictureOfAHugeDeclaredSizeIsRefused) {
    writePicture("whole.bmp", 16, 16, kRed);
    const uint32_t sizes[][2] = {{0x7FFFFFFF, 0x7FFFFFFF}, {0x7FFFFFFF, 1}, {1, 0x7FFFFFFF},
                                 {100000, 100000},         {20000, 2},      {0, 16},
                                 {16, 0x80000000},         {0xFFFFFFFF, 1}};
    for (const auto& size : sizes) {
        std::string bytes = bytesOf("whole.bmp");
        setWord(bytes, 18, size[0]);
        setWord(bytes, 22, size[1]);
        writeFile("levels/level1/a.bmp", bytes);
        const std::string output =
            runStatements("a = loadimage(\"a.bmp\"); showimage(a, 1); print(7);");
        EXPECT_EQ('7', output.back());
    }
    EXPECT_EQ(8u, gImages.size());
    composeFrame();
}

// SDL_image would take 8 GB to find out.
TEST_F(Images, PictureLargerThanATextureIsRefusedByItsHeader) {
    writePicture("whole.bmp", 16, 16, kRed);
    SDL_RendererInfo info;
    ASSERT_EQ(0, SDL_GetRendererInfo(gRenderer, &info));
    const std::string limits =
        std::to_string(info.max_texture_width) + "x" + std::to_string(info.max_texture_height);
    const uint32_t tooHigh = static_cast<uint32_t>(info.max_texture_height) + 1;
    const uint32_t tooWide = static_cast<uint32_t>(info.max_texture_width) + 1;
    const uint32_t sizes[][2] = {
        {1, 0x7FFFFFFF}, {1, 0x80000000}, {1, tooHigh}, {1, 0U - tooHigh}, {tooWide, 1}};
    for (const auto& size : sizes) {
        std::string bytes = bytesOf("whole.bmp");
        setWord(bytes, 18, size[0]);
        setWord(bytes, 22, size[1]);
        writeFile("levels/level1/a.bmp", bytes);
        const std::string reason = "Texture dimensions are limited to " + limits;
        const std::string output = runStatements("loadimage(\"a.bmp\");");
        EXPECT_EQ(0u, output.find("\n1Unable to load image levels/level1/a.bmp! SDL Error: " +
                                  reason + "\nCant load image: levels/level1/a.bmp.   "))
            << output;
    }
}

// The header of the oldest BMP files has 16-bit sizes: 1 by 65535, and 16 by 16 to be sure that a
// picture of that kind is not refused for nothing.
TEST_F(Images, OldHeaderIsReadToo) {
    std::string bytes("BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\x01\0\xFF\xFF\x01\0\x18\0", 26);
    writeFile("levels/level1/a.bmp", bytes);
    EXPECT_NE(std::string::npos,
              runStatements("loadimage(\"a.bmp\");").find("Texture dimensions are limited to "));
    bytes[18] = bytes[20] = 16;
    bytes[21] = 0;
    std::string pixels;
    for (int i = 0; i < 16 * 16; i++)
        pixels += std::string("\0\0\xFF", 3);
    writeFile("levels/level1/b.bmp", bytes + pixels);
    EXPECT_EQ("", runStatements("a = loadimage(\"b.bmp\"); showimage(a, 1);"));
    EXPECT_EQ(kRed, framePixel(8, 8));
}

TEST_F(Images, ReasonIsToldWhole) {
    std::string path = "levels/";
    for (int i = 0; i < 6; i++)
        path += std::string(60, 'x') + "/";
    path += "end.bmp";
    testing::internal::CaptureStdout();
    loadImageFile(path.c_str());
    EXPECT_NE(std::string::npos, testing::internal::GetCapturedStdout().find("open " + path));
}

TEST_F(Images, PictureOfAnotherFormatIsLoadedByItsContents) {
    // The smallest picture of the portable pixmap format: one green pixel. The name lies.
    writeFile("levels/level1/a.bmp", std::string("P6\n1 1\n255\n") + '\0' + '\xFF' + '\0');
    EXPECT_EQ("", runStatements("a = loadimage(\"a.bmp\"); showimage(a, 1);"
                                "changesizeimage(a, 50, 50);"));
    EXPECT_EQ(kGreen, framePixel(25, 25));
}

TEST_F(Images, NamesOfOddBytesReachTheFileSystemUnchanged) {
    const std::string name = "sp ace%s%n\xFF\xFE\x01_\xD0\x96.bmp";
    writePicture("levels/level1/" + name, 9, 9, kRed);
    EXPECT_EQ("0", runStatements("print(loadimage(\"" + name + "\"));"));
    EXPECT_EQ(9, getW(gImages.at(0)));
    expectUnusable("\xFF%s%d%n\x01.bmp");
}

TEST_F(Images, NameMayLeaveTheLevelFolder) {
    EXPECT_EQ("0", runStatements("print(loadimage(\"../../SysPics/select.bmp\"));"));
}
