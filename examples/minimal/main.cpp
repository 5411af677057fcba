#include <Olvik3DViewerControl.h>

#include <QApplication>

#include <cmath>
#include <vector>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Olvik3DViewerControl viewer("Ripples", nullptr, nullptr);
    viewer.show();

    constexpr int width = 512, profiles = 384;
    std::vector<float> heights;
    for (int y = -profiles / 2; y < profiles / 2; ++y) {
        for (int x = -width / 2; x < width / 2; ++x) {
            const float r = std::hypot(float(x), float(y));
            heights.push_back(60 + 50 * std::cos(r / 16) * std::exp(-r / 120));
        }
    }
    viewer.setBuffer(heights.data(), width, profiles);
    return QApplication::exec();
}
