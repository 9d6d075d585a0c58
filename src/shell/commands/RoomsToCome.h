#pragma once

/// Calls of the frame into rooms that are not built yet, each in its final place. Every one does nothing until its room
/// implements it and it is removed from this list.
class RoomsToCome {
 public:
    virtual ~RoomsToCome() = default;

    virtual void ShowProperties() {}
};
