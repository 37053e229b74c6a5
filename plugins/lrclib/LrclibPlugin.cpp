#include "LrclibPlugin.h"

#include "LrclibFetcher.h"

QObject* LrclibPlugin::instance()
{
    return new LrclibFetcher; // the caller owns it
}
