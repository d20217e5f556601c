// Part of no target: .ci/lint checks first that both linters find the faults in it.

#include <QList>

struct Readings
{
    QList<int> values;
};

int *planted(Readings &readings)
{
    int sum = 0;
    for (const int value : readings.values) // detaches
        sum += value;
    return sum > 0 ? new int(sum) : 0; // 0 as a pointer
}

int plantedPath(bool isEmpty)
{
    const int *first = nullptr;
    return isEmpty ? *first : 0; // a null pointer, on one path
}
