// SPDX-License-Identifier: MIT
#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv);

/// Stands for libFuzzer in the ordinary tests: feeds the fuzzer every file of a folder, and nothing at all.
/// What does not hold ends the process.
int main(int argc, char **argv)
{
    if (LLVMFuzzerInitialize && LLVMFuzzerInitialize(&argc, &argv) != 0)
        return EXIT_FAILURE;
    const QDir folder(argc == 2 ? QString::fromLocal8Bit(argv[1]) : QString());
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    if (argc != 2 || names.isEmpty()) {
        std::fputs("Give one folder with inputs.\n", stderr);
        return EXIT_FAILURE;
    }
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(""), 0);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "%s cannot be read.\n", qPrintable(name));
            return EXIT_FAILURE;
        }
        const QByteArray input = file.readAll();
        std::fprintf(stderr, "%s\n", qPrintable(name)); // which it was, when it ends here
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()),
                               static_cast<size_t>(input.size()));
    }
    return EXIT_SUCCESS;
}
