#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::setlocale(LC_ALL, "");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
