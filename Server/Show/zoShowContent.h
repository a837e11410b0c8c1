#pragma once

// What the windows of a session show.
enum class zoShowContent { None, Tiles, TestImage };
