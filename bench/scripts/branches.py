def main():
    a = 0
    b = 0
    i = 0
    while i < @N@:
        if i % 2 == 0:
            if i % 3 == 0:
                if a > 1000:
                    a = a - 1000
                else:
                    a = a + 7
            else:
                b = b + 1
        else:
            if a < b:
                a = a + 2
        i = i + 1
    print(a + b, end="")


main()
