def main():
    total = 0
    i = 0
    while i < @N@:
        j = 0
        while j < 10:
            k = 0
            while k < 5:
                total = total + k
                k = k + 1
            j = j + 1
        total = total - i
        i = i + 1
    print(total, end="")


main()
