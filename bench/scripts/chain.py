def last(n):
    return n + 1


def third(n):
    return last(n) + last(n + 1)


def second(n):
    m = third(n)
    return third(m % 100)


def first(n, limit):
    if n > limit:
        return second(n - limit)
    return second(n)


def down(n):
    if n < 1:
        return 0
    return down(n - 1) + 1


def main():
    total = 0
    i = 0
    while i < @N@:
        total = (total + first(i, 1000)) % 10007 + down(20)
        i = i + 1
    print(total, end="")


main()
