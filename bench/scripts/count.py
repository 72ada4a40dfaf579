def main():
    i = 0
    while i < @N@:
        i = i + 1
    print(i, end="")


main()
