#include "LrcServerPlugin.h"

#include "LrcServerFetcher.h"

QObject* LrcServerPlugin::instance()
{
    return new LrcServerFetcher; // the caller owns it
}
