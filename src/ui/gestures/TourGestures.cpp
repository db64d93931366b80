#include "ui/gestures/TourGestures.h"

#include <QCoreApplication>

namespace klova {
namespace {

constexpr const char* kReleased = QT_TRANSLATE_NOOP("klova", "Released: all as usual");
constexpr const char* kPress = QT_TRANSLATE_NOOP("klova", "Press and hold them all");
constexpr const char* kHeld = QT_TRANSLATE_NOOP("klova", "Held: Klova listens");
constexpr const char* kDrag = QT_TRANSLATE_NOOP("klova", "Drag: move");
constexpr const char* kMaximize = QT_TRANSLATE_NOOP("klova", "Double-click: maximize");
constexpr const char* kCenter = QT_TRANSLATE_NOOP("klova", "Again: center");
constexpr const char* kHalf = QT_TRANSLATE_NOOP("klova", "One arrow: a half");
constexpr const char* kQuarter = QT_TRANSLATE_NOOP("klova", "Two arrows: a quarter");
constexpr const char* kArrowsFirst = QT_TRANSLATE_NOOP("klova", "Let go of the arrows first");
constexpr const char* kMinimize = QT_TRANSLATE_NOOP("klova", "Right-click: minimize");
constexpr const char* kReopen = QT_TRANSLATE_NOOP("klova", "%1: reopen");

constexpr Frame kWindow{{400, 190}, {640, 450}};
constexpr Point kPointer{800, 470};

constexpr Frame kBeforeDrag{{170, 100}, {640, 450}};
constexpr Point kGrip{560, 360};
constexpr Frame kAfterDrag{{650, 340}, {640, 450}};
constexpr Point kDropped{1040, 600};

constexpr Frame kWhole = kDrawnScreen;
constexpr Frame kMiddle{{360, 225}, {720, 450}};
constexpr Frame kLeft{{0, 0}, {720, 900}};
constexpr Frame kTopLeft{{0, 0}, {720, 450}};
constexpr Frame kRight{{720, 0}, {720, 900}};
constexpr Frame kBottomRight{{720, 450}, {720, 450}};

constexpr Beat kHolding[] = {
    {1.3, 0, kNothing, false, kWindow, kPointer, kReleased},
    {0.9, 1, kNothing, false, kWindow, kPointer, kPress},
    {2.2, 1, kNothing, false, kWindow, kPointer, kHeld},
    {0.5, 0, kNothing, false, kWindow, kPointer, kReleased},
};
constexpr std::size_t kHoldingStills[] = {0, 2};

constexpr Beat kMoving[] = {
    {0.7, 0, kNothing, false, kBeforeDrag, kGrip, kDrag},
    {0.5, 1, kNothing, false, kBeforeDrag, kGrip, kDrag},
    {0.3, 1, kLeftButton, false, kBeforeDrag, kGrip, kDrag},
    {1.2, 1, kLeftButton, false, kAfterDrag, kDropped, kDrag},
    {0.8, 1, kNothing, false, kAfterDrag, kDropped, kDrag},
    {0.13, 1, kLeftButton, false, kAfterDrag, kDropped, kMaximize},
    {0.13, 1, kNothing, false, kAfterDrag, kDropped, kMaximize},
    {0.5, 1, kLeftButton, false, kWhole, kDropped, kMaximize},
    {1.1, 1, kNothing, false, kWhole, kDropped, kMaximize},
    {0.13, 1, kLeftButton, false, kWhole, kDropped, kCenter},
    {0.13, 1, kNothing, false, kWhole, kDropped, kCenter},
    {0.5, 1, kLeftButton, false, kMiddle, kDropped, kCenter},
    {1.1, 1, kNothing, false, kMiddle, kDropped, kCenter},
    {0.6, 0, kNothing, false, kMiddle, kGrip, kCenter},
};
constexpr std::size_t kMovingStills[] = {3, 7, 11};

constexpr Beat kSnapping[] = {
    {0.7, 0, kNothing, false, kWindow, kPointer, kHalf},
    {0.5, 1, kNothing, false, kWindow, kPointer, kHalf},
    {0.5, 1, kLeftArrow, false, kLeft, kPointer, kHalf},
    {0.9, 1, kLeftArrow, false, kLeft, kPointer, kHalf},
    {0.5, 1, kLeftArrow | kUpArrow, false, kTopLeft, kPointer, kQuarter},
    {1.0, 1, kLeftArrow | kUpArrow, false, kTopLeft, kPointer, kQuarter},
    {0.5, 1, kNothing, false, kTopLeft, kPointer, kQuarter},
    {0.5, 1, kRightArrow, false, kRight, kPointer, kHalf},
    {0.9, 1, kRightArrow, false, kRight, kPointer, kHalf},
    {0.5, 1, kRightArrow | kDownArrow, false, kBottomRight, kPointer, kQuarter},
    {1.0, 1, kRightArrow | kDownArrow, false, kBottomRight, kPointer, kQuarter},
    {0.8, 1, kNothing, false, kBottomRight, kPointer, kArrowsFirst},
    {0.8, 0, kNothing, false, kBottomRight, kPointer, kArrowsFirst},
};
constexpr std::size_t kSnappingStills[] = {3, 5};

constexpr Beat kMinimizing[] = {
    {0.8, 0, kNothing, false, kWindow, kPointer, kMinimize},
    {0.5, 1, kNothing, false, kWindow, kPointer, kMinimize},
    {0.6, 1, kRightButton, true, kWindow, kPointer, kMinimize},
    {1.1, 1, kNothing, true, kWindow, kPointer, kMinimize},
    {0.6, 1, kReopenKey, false, kWindow, kPointer, kReopen},
    {1.2, 1, kNothing, false, kWindow, kPointer, kReopen},
    {0.5, 0, kNothing, false, kWindow, kPointer, kReopen},
};
constexpr std::size_t kMinimizingStills[] = {2, 4};

} // namespace

const Gesture kHoldingKeys{kHolding, kHoldingStills};
const Gesture kMovingWindow{kMoving, kMovingStills};
const Gesture kSnappingWindow{kSnapping, kSnappingStills};
const Gesture kMinimizingWindow{kMinimizing, kMinimizingStills};

} // namespace klova
