def add(a, b):
    return a + b


def main():
    i = 0
    while i < @N@:
        i = add(i, 1)
    print(i, end="")


main()
