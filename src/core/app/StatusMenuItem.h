#pragma once

// The status menu's items that tell the controller which one was chosen.
enum class StatusMenuItem { Other, ModeStream, ModeLine };
