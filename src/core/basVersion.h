#pragma once

#include <QString>

/// The program's name and version, as in "Zebek Suite v1.10.014".
QString fnVersionLine();
