// The tests of windows need an application object, for which there can be only one.

#include "tests/support/DecimalPoint.h"

#include <QApplication>
#include <QStyleFactory>

#include <gtest/gtest.h>

int main(int nArguments, char** ppszArguments)
{
    testing::InitGoogleTest(&nArguments, ppszArguments);
    const QApplication application(nArguments, ppszArguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    return HasExpectedPoint() ? RUN_ALL_TESTS() : 1;
}
