#pragma once

class MusicSource;

// A registry hook for sources; registering deliberately does nothing.
class MusicSourceController {
public:
    static MusicSourceController& sharedController();
    void registerMusicSource(MusicSource* source);

private:
    MusicSourceController() = default;
};
