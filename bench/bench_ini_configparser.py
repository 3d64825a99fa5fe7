# Baseline of bench_ini: configparser reads the INI file and every value of every section.
# Prints the best time in seconds and the number of values and characters read.
import configparser
import sys
import time

path, repeats = sys.argv[1], int(sys.argv[2])
best = None
for _ in range(repeats):
    start = time.perf_counter()
    parser = configparser.ConfigParser(interpolation=None, strict=False)
    parser.read(path, encoding="latin-1")
    count = 0
    chars = 0
    for section in parser.sections():
        for _key, value in parser.items(section, raw=True):
            count += 1
            chars += len(value)
    elapsed = time.perf_counter() - start
    best = elapsed if best is None else min(best, elapsed)
print(f"{best:.6f} {count} {chars}")
