#include "core/sources/MusicSourceController.h"

MusicSourceController& MusicSourceController::sharedController()
{
    static MusicSourceController instance; // created once, also under concurrent first calls
    return instance;
}

void MusicSourceController::registerMusicSource(MusicSource* /*source*/) {}
