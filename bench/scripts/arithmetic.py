def main():
    a = 1
    b = 7
    i = 0
    while i < @N@:
        a = ((a * 3 + b) % 1000 + (i % 7) * (b + 2)) // 3 + (a + i) % 13
        b = (b * 5 + a - b // 2) % 997
        i = i + 1
    print(a + b, end="")


main()
