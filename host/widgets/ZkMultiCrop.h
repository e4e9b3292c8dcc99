// Rectangles on the player that the user draws, moves and resizes.
#pragma once

class ZkMultiCropWidget
{
public:
    // What a drag does to a rectangle: moves it, or resizes it by one of its eight handles.
    enum OperationType {
        MoveOperation = 0,
        ResizeTopLeft,
        ResizeTop,
        ResizeTopRight,
        ResizeRight,
        ResizeBottomRight,
        ResizeBottom,
        ResizeBottomLeft,
        ResizeLeft,
    };
};
