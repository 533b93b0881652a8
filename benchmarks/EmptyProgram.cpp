// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The least that a program of Qt Core is: what bench_start.cpp holds the tool against.

#include <QtCore/QString>

int main(int argc, char **)
{
    return QString::number(argc).size() - 1;
}
