#include "ui/gestures/TourGestures.h"

#include <QCoreApplication>

namespace klova {
namespace {

constexpr const char* kReleased = QT_TRANSLATE_NOOP("klova", "Released: all as usual");
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
    {1.3, 0, kNothing, kWindow, kPointer, false, kReleased},
    {0.9, 1, kNothing, kWindow, kPointer, false, kHeld},
    {2.2, 1, kNothing, kWindow, kPointer, false, kHeld},
    {0.5, 0, kNothing, kWindow, kPointer, false, kReleased},
};
constexpr std::size_t kHoldingStills[] = {0, 2};

constexpr Beat kMoving[] = {
    {0.7, 0, kNothing, kBeforeDrag, kGrip, false, kDrag},
    {0.5, 1, kNothing, kBeforeDrag, kGrip, false, kDrag},
    {0.3, 1, kLeftButton, kBeforeDrag, kGrip, false, kDrag},
    {1.2, 1, kLeftButton, kAfterDrag, kDropped, false, kDrag},
    {0.8, 1, kNothing, kAfterDrag, kDropped, false, kDrag},
    {0.13, 1, kLeftButton, kAfterDrag, kDropped, false, kMaximize},
    {0.13, 1, kNothing, kAfterDrag, kDropped, false, kMaximize},
    {0.5, 1, kLeftButton, kWhole, kDropped, false, kMaximize},
    {1.1, 1, kNothing, kWhole, kDropped, false, kMaximize},
    {0.13, 1, kLeftButton, kWhole, kDropped, false, kCenter},
    {0.13, 1, kNothing, kWhole, kDropped, false, kCenter},
    {0.5, 1, kLeftButton, kMiddle, kDropped, false, kCenter},
    {1.1, 1, kNothing, kMiddle, kDropped, false, kCenter},
    {0.6, 0, kNothing, kMiddle, kGrip, false, kCenter},
};
constexpr std::size_t kMovingStills[] = {3, 7, 11};

constexpr Beat kSnapping[] = {
    {0.7, 0, kNothing, kWindow, kPointer, false, kHalf},
    {0.5, 1, kNothing, kWindow, kPointer, false, kHalf},
    {0.5, 1, kLeftArrow, kLeft, kPointer, false, kHalf},
    {0.9, 1, kLeftArrow, kLeft, kPointer, false, kHalf},
    {0.5, 1, kLeftArrow | kUpArrow, kTopLeft, kPointer, false, kQuarter},
    {1.0, 1, kLeftArrow | kUpArrow, kTopLeft, kPointer, false, kQuarter},
    {0.5, 1, kNothing, kTopLeft, kPointer, false, kQuarter},
    {0.5, 1, kRightArrow, kRight, kPointer, false, kHalf},
    {0.9, 1, kRightArrow, kRight, kPointer, false, kHalf},
    {0.5, 1, kRightArrow | kDownArrow, kBottomRight, kPointer, false, kQuarter},
    {1.0, 1, kRightArrow | kDownArrow, kBottomRight, kPointer, false, kQuarter},
    {0.8, 1, kNothing, kBottomRight, kPointer, false, kArrowsFirst},
    {0.8, 0, kNothing, kBottomRight, kPointer, false, kArrowsFirst},
};
constexpr std::size_t kSnappingStills[] = {3, 5};

constexpr Beat kMinimizing[] = {
    {0.8, 0, kNothing, kWindow, kPointer, false, kMinimize},
    {0.5, 1, kNothing, kWindow, kPointer, false, kMinimize},
    {0.6, 1, kRightButton, kWindow, kPointer, true, kMinimize},
    {1.1, 1, kNothing, kWindow, kPointer, true, kMinimize},
    {0.6, 1, kReopenKey, kWindow, kPointer, false, kReopen},
    {1.2, 1, kNothing, kWindow, kPointer, false, kReopen},
    {0.5, 0, kNothing, kWindow, kPointer, false, kReopen},
};
constexpr std::size_t kMinimizingStills[] = {2, 4};

} // namespace

const Gesture kHoldingKeys{kHolding, kHoldingStills};
const Gesture kMovingWindow{kMoving, kMovingStills};
const Gesture kSnappingWindow{kSnapping, kSnappingStills};
const Gesture kMinimizingWindow{kMinimizing, kMinimizingStills};

} // namespace klova
